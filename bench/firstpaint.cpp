#include "firstpaint.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "frame/services.h"
#include "platform/qt/qttoolkit.h"

namespace orvenmod::bench {

void measureFirstPaint(Report& report, const FirstPaint& window) {
    auto* toolkit = dynamic_cast<platform::qt::QtToolkit*>(&services().toolkit);
    if (toolkit == nullptr) throw std::logic_error("the window is measured on the Qt toolkit");
    double painted = 0;
    std::chrono::steady_clock::time_point paintedAt;
    toolkit->setModalObserver([&](platform::Window& shown) {
        painted = threadMilliseconds();
        paintedAt = std::chrono::steady_clock::now();
        shown.close();
    });
    double least = std::numeric_limits<double>::max();
    double byClock = least;
    for (int run = 0; run < window.runs; ++run) {
        window.prepare();
        const double begin = threadMilliseconds();
        const auto called = std::chrono::steady_clock::now();
        window.show();
        const std::chrono::duration<double, std::milli> waited = paintedAt - called;
        least = std::min(least, painted - begin);
        byClock = std::min(byClock, waited.count());
    }
    toolkit->setModalObserver({});
    report.ratio(window.name, least, window.boundName, window.bound, 1.0, "ms");
    report.note("  by the clock, with the machine's other work: " + std::to_string(std::lround(byClock)) + " ms");
}

}  // namespace orvenmod::bench
