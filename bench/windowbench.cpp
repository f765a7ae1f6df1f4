#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <stdexcept>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/settings.h>

#include "benches.h"
#include "frame/services.h"
#include "platform/qt/qttoolkit.h"
#include "stage.h"

namespace orvenmod::bench {

void measureWindow(Report& report, const std::string& folder, int goods, double bare) {
    const std::string target = goodsDatabase(folder, goods);
    SaveSetting("Orvencom", "SystemLogin", "IsAdmin", "1");
    SaveSetting("Orvencom", "SystemSetup", "gAppPath", folder);
    clsBasicInfo items;
    auto* toolkit = dynamic_cast<platform::qt::QtToolkit*>(&services().toolkit);
    if (toolkit == nullptr) throw std::logic_error("the window is measured on the Qt toolkit");
    double painted = 0;
    std::chrono::steady_clock::time_point paintedAt;
    toolkit->setModalObserver([&](platform::Window& window) {
        painted = threadMilliseconds();
        paintedAt = std::chrono::steady_clock::now();
        window.close();
    });
    double least = std::numeric_limits<double>::max();
    double byClock = least;
    for (int run = 0; run < 4; ++run) {
        const double begin = threadMilliseconds();
        const auto shown = std::chrono::steady_clock::now();
        items.mainInterface(3, "", "", target, 0);
        const std::chrono::duration<double, std::milli> waited = paintedAt - shown;
        least = std::min(least, painted - begin);
        byClock = std::min(byClock, waited.count());
    }
    toolkit->setModalObserver({});
    report.ratio("entry call to first painted rows", least, "1.5 bare loops + 150 ms", 1.5 * bare + 150, 1.0, "ms");
    report.note("  by the clock, with the machine's other work: " + std::to_string(std::lround(byClock)) + " ms");
}

}  // namespace orvenmod::bench
