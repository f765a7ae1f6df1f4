// Saving new items into a class of many: what the clerk waits for after the button, against the statements of it. The
// item is taken out again after each run, so that all runs meet the same database.
#include <algorithm>
#include <limits>

#include "bareloop.h"
#include "benches.h"
#include "savestage.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

constexpr int kRuns = 10;

}  // namespace

double measureSave(Report& report, const std::string& folder, int goods) {
    const std::string target = goodsDatabase(folder, goods);
    const SaveStage items(target);
    MemoryStage windows;
    std::unique_ptr<BareLoop> statements;
    double ours = std::numeric_limits<double>::max();
    double bare = ours;
    for (int run = 0; run < kRuns; ++run) {
        ours = std::min(ours, items.save(windows, threadMilliseconds));
        items.restore();
        if (!statements) statements = std::make_unique<BareLoop>(target, statementsOf(windows.records()));
        bare = std::min(bare, leastOf(1, [&] { statements->run(); }));
        items.restore();
    }
    report.ratio("saving a new item", ours, "its statements alone", bare, 1.5, "ms");
    return ours;
}

}  // namespace orvenmod::bench
