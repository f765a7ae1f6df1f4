// The list dragged to any place by its scroll bar.
#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <limits>
#include <stdexcept>
#include <vector>

#include <orvenmod/clsBasicInfo.h>

#include "benches.h"
#include "frame/services.h"
#include "platform/qt/qttoolkit.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

constexpr int kPlaces = 50;
constexpr double kFrame = 16;  // milliseconds

QTableView& shownList() {
    const QWidget* window = QApplication::activeModalWidget();
    auto* list = window != nullptr ? window->findChild<QTableView*>(QStringLiteral("vsf1")) : nullptr;
    if (list == nullptr) throw std::logic_error("no list is shown");
    return *list;
}

/// The slowest of places all over the list, each from the move of the bar to the painted rows.
double slowestPlace(QTableView& list) {
    QScrollBar& bar = *list.verticalScrollBar();
    double slowest = 0;
    for (int place = 0; place < kPlaces; ++place) {
        // Far from each other, and in no order.
        const auto at = static_cast<int>(static_cast<long long>(bar.maximum()) * (place * 37 % kPlaces) / kPlaces);
        const double begin = threadMilliseconds();
        bar.setValue(at);
        list.viewport()->repaint();
        slowest = std::max(slowest, threadMilliseconds() - begin);
    }
    return slowest;
}

}  // namespace

void measureScrolling(Report& report, const std::string& folder, int goods) {
    auto* toolkit = dynamic_cast<platform::qt::QtToolkit*>(&services().toolkit);
    if (toolkit == nullptr) throw std::logic_error("scrolling is measured on the Qt toolkit");
    double slowest = std::numeric_limits<double>::max();
    toolkit->setModalObserver([&](platform::Window& window) {
        for (int run = 0; run < 3; ++run)
            slowest = std::min(slowest, slowestPlace(shownList()));
        window.close();
    });
    clsBasicInfo().mainInterface(3, "", "", goodsDatabase(folder, goods), 0);
    toolkit->setModalObserver({});
    report.ratio("any place by the scroll bar, to painted", slowest, "16 ms", kFrame, 1.0, "ms");
}

}  // namespace orvenmod::bench
