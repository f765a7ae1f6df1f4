// A host with 200 MB of ballast: what its first call costs before the window's own work.
#include <QApplication>
#include <QMainWindow>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

namespace {

using Clock = std::chrono::steady_clock;

int millisecondsSince(Clock::time_point begin) {
    return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count());
}

/// Sees the first thing that a window of the component is told: its font, before it has a control.
class WindowWatch : public QObject {
public:
    explicit WindowWatch(Clock::time_point begin) : begin_(begin) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool dressed = event->type() == QEvent::FontChange;
        if (took < 0 && dressed && qobject_cast<QMainWindow*>(watched) != nullptr) took = millisecondsSince(begin_);
        return QObject::eventFilter(watched, event);
    }

    int took = -1;

private:
    Clock::time_point begin_;
};

}  // namespace

int main() {
    constexpr std::size_t kBallast = 200U << 20U;
    constexpr int kMost = 150;
    const host::Suite suite;
    const std::vector<char> ballast(kBallast, 'b');

    const Clock::time_point begin = Clock::now();
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
