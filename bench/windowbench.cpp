#include <cmath>
#include <vector>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/settings.h>

#include "benches.h"
#include "firstpaint.h"
#include "stage.h"

namespace orvenmod::bench {

void measureFirstObject(Report& report) {
    constexpr std::size_t kBallast = 200U << 20U;
    constexpr double kMost = 150;
    const std::vector<char> ballast(kBallast, 'b');
    const double begin = processMilliseconds();
    const double called = wallMilliseconds();
    const clsBasicInfo items;
    const double waited = wallMilliseconds() - called;
    const double computed = processMilliseconds() - begin;
    report.ratio("the first object, by the clock", waited, "what a user doesn't notice", kMost, 1.0, "ms");
    report.note("  of the processor: " + std::to_string(std::lround(computed)) + " ms");
}

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
