#include <algorithm>
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
    toolkit->setModalObserver([&](platform::Window& window) {
        painted = threadMilliseconds();
        window.close();
    });
    double least = std::numeric_limits<double>::max();
    for (int run = 0; run < 4; ++run) {
        const double begin = threadMilliseconds();
        items.mainInterface(3, "", "", target, 0);
        least = std::min(least, painted - begin);
    }
    toolkit->setModalObserver({});
    report.ratio("entry call to first painted rows", least, "1.5 bare loops + 150 ms", 1.5 * bare + 150, 1.0, "ms");
}

}  // namespace orvenmod::bench
