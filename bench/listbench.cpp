#include <algorithm>
#include <limits>

#include "bareloop.h"
#include "benches.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

/// Few long runs, many short ones.
int runsFor(int goods) { return std::clamp(2000000 / goods, 3, 30); }

std::int32_t largestCategory(const std::string& target) {
    const auto connection = componentStore().connect(target);
    const auto rows =
        connection->open("select top 1 fItemId from tblItem where fItemClassId=3 and fDepth=1 order by fNumber");
    connection->close();
    return std::stoi(rows.text("fItemId"));
}

/// Looked at all over, as after a day of scrolling.
void compareMemory(Report& report, const std::string& target, std::size_t textBytes, std::size_t cells) {
    const auto connection = componentStore().connect(target);
    const auto rows = connection->openList(listStatement());
    connection->close();
    constexpr std::size_t kLooks = 1000;
    for (std::size_t look = 0; look < kLooks && rows->rowCount() > 0; ++look)
        rows->cell(rows->rowCount() * look / kLooks, 0);
    constexpr double kMebibyte = 1024.0 * 1024.0;
    constexpr std::size_t kMost = 40UL << 20;  // by keys, of whatever size
    const bool byKeys = rows->reading() == store::ListReading::keys;
    const std::size_t bound = byKeys ? kMost : textBytes + 16 * cells;
    report.ratio("memory of the open list", static_cast<double>(rows->memory()) / kMebibyte,
                 byKeys ? "40 MiB" : "texts + 16 bytes a cell", static_cast<double>(bound) / kMebibyte, 1.0, "MiB");
}

/// All of the list read in the order of a heading, as an export and a print do.
void measureSortedWalk(Report& report, ListStage& stage, double bare) {
    constexpr int kName = 3;
    platform::ListGrid& grid = stage.grid();
    stage.list().findInfo(1, 0);
    grid.sort(kName, platform::SortOrder::ascending);
    const double walked = leastOf(1, [&] {
        for (int row = 1; row < grid.rowCount(); ++row) {
            for (int column = 2; column < grid.columnCount(); ++column)
                grid.value(row, column);
        }
    });
    report.ratio("all rows in the order of a heading", walked, "bare loop", bare, 1.1, "ms");
}

}  // namespace

ListTimes measureList(Report& report, const std::string& folder, int goods) {
    const std::string target = goodsDatabase(folder, goods);
    const int runs = runsFor(goods);
    ListTimes times{goods};
    ListStage stage(target);
    stage.list().getListInfo(2);

    BareLoop bare(target, {listStatement()});
    std::size_t textBytes = bare.run();
    Adodc rows(stage.grid());
    rows.setConnectionString(target);
    rows.setRecordSource(listStatement());
    rows.refresh();
    // By turns, so that neither has the machine's better minute.
    double bound = std::numeric_limits<double>::max();
    times.bare = bound;
    for (int run = 0; run < runs; ++run) {
        times.bare = std::min(times.bare, leastOf(1, [&] { textBytes = bare.run(); }));
        bound = std::min(bound, leastOf(1, [&] { rows.refresh(); }));
    }
    report.ratio("rows fetched and bound", bound, "bare loop", times.bare, 1.25, "ms");
    compareMemory(report, target, textBytes, bare.cells());

    times.list = leastOf(runs, [&] { stage.list().getListInfo(2); });
    report.ratio("getListInfo, columns and rows", times.list, "bare loop", times.bare, 1.5, "ms");
    const bool byKeys = goods >= kMany;
    const std::int32_t category = largestCategory(target);
    BareLoop bareNode(target, {listStatement(" and fNBNumber like '." + std::to_string(category) + ".%'")});
    const double bareNodeTime = leastOf(std::min(runs, 5), [&] { bareNode.run(); });
    times.node = leastOf(runs, [&] { stage.list().findInfo(1, category); });
    report.ratio("findInfo on a category", times.node, "bare loop over it", bareNodeTime, byKeys ? 0.10 : 1.5, "ms");
    times.search = leastOf(runs, [&] { stage.list().findInfo2(" and (  fName like '%恒力%' )"); });
    report.ratio("search with 包含", times.search, "bare loop over all", times.bare, byKeys ? 0.12 : 1.0, "ms");
    if (byKeys) measureSortedWalk(report, stage, times.bare);
    return times;
}

}  // namespace orvenmod::bench
