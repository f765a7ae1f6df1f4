// A host with 200 MB of ballast: what its first call costs before the window's own work.
#include <QApplication>
#include <QMainWindow>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

namespace {

// Of the processor, since the machine may be busy with others.
int millisecondsSince(std::clock_t begin) { return static_cast<int>((std::clock() - begin) * 1000 / CLOCKS_PER_SEC); }

/// Sees the first thing that a window of the component is told: its font, before it has a control.
class WindowWatch : public QObject {
public:
    explicit WindowWatch(std::clock_t begin) : begin_(begin) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool dressed = event->type() == QEvent::FontChange;
        if (took < 0 && dressed && qobject_cast<QMainWindow*>(watched) != nullptr) took = millisecondsSince(begin_);
        return QObject::eventFilter(watched, event);
    }

    int took = -1;

private:
    std::clock_t begin_;
};

}  // namespace

int main() {
    constexpr std::size_t kBallast = 200U << 20U;
    constexpr int kMost = 150;
    const host::Suite suite;
    const std::vector<char> ballast(kBallast, 'b');

    const std::clock_t begin = std::clock();
    orvenmod::clsBasicInfo items;
    const int object = millisecondsSince(begin);
    WindowWatch watch(begin);
    host::whenNextWindowOpens(host::pickFirst);
    items.mainInterface(3, "", "", suite.connectionString(), 1);
    std::printf("the first object took %d ms, to the first window %d ms\n", object, watch.took);
    host::expect(watch.took >= 0 && watch.took <= kMost,
                 "to the first window at most 150 ms: " + std::to_string(watch.took));
    host::expect(!items.fNumber.empty() && ballast.back() == 'b', "an item is picked");
    return 0;
}
