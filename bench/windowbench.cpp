#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/settings.h>

#include "benches.h"
#include "firstpaint.h"
#include "stage.h"

namespace orvenmod::bench {

void measureWindow(Report& report, const std::string& folder, int goods, double bare) {
    const std::string target = goodsDatabase(folder, goods);
    SaveSetting("Orvencom", "SystemLogin", "IsAdmin", "1");
    SaveSetting("Orvencom", "SystemSetup", "gAppPath", folder);
    clsBasicInfo items;
    measureFirstPaint(report, {.name = "entry call to first painted rows",
                               .boundName = "1.5 bare loops + 150 ms",
                               .bound = 1.5 * bare + 150,
                               .runs = 4,
                               .prepare = [] {},
                               .show = [&] { items.mainInterface(3, "", "", target, 0); }});
}

}  // namespace orvenmod::bench
