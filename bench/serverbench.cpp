// The same windows and statements on a PostgreSQL server of the bench's own, against the client library's bare calls.
// The server's work counts: by the clock on the wall, or, of short commands, as what both sides have computed. It
// doesn't wait for its disk, so that nothing hides behind that.
#include <algorithm>
#include <cmath>
#include <limits>

#include "benches.h"
#include "benchserver.h"
#include "entry/startup.h"
#include "frame/adodc.h"
#include "linebench.h"
#include "savestage.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

int runsFor(int goods) { return std::clamp(1000000 / goods, 3, 20); }

// Fewer rows tell of the schema's making rather than of the rows.
void reportCopy(Report& report, const Copied& copied) {
    constexpr double kWantedRate = 50000;
    constexpr std::int64_t kEnoughRows = 100000;
    if (copied.rows < kEnoughRows) return;
    const double rate = static_cast<double>(copied.rows) * 1000 / copied.milliseconds;
    report.ratio("rows a second that are wanted", kWantedRate, "rows a second moved over and compared", rate, 1.0,
                 "rows/s");
    report.note("  " + std::to_string(copied.rows) + " rows in " + std::to_string(std::lround(copied.milliseconds)) +
                " ms");
}

void measureRows(Report& report, const std::string& target, int goods) {
    ListStage stage(target);
    BareServerLoop bare(target, {listStatement()});
    Adodc rows(stage.grid());
    rows.setConnectionString(target);
    rows.setRecordSource(listStatement());
    rows.refresh();
    bare.run();
    double ours = std::numeric_limits<double>::max();
    double bound = ours;
    double ourWork = ours;
    double boundWork = ours;
    for (int run = 0; run < runsFor(goods); ++run) {
        const double worked = threadMilliseconds();
        bound = std::min(bound, leastOf(
                                    1, [&] { bare.run(); }, wallMilliseconds));
        const double workedByBare = threadMilliseconds();
        ours = std::min(ours, leastOf(
                                  1, [&] { rows.refresh(); }, wallMilliseconds));
        boundWork = std::min(boundWork, workedByBare - worked);
        ourWork = std::min(ourWork, threadMilliseconds() - workedByBare);
    }
    report.ratio("rows fetched and bound", ours, "bare loop", bound, 1.25, "ms");
    report.note("  of these the client's own work: " + std::to_string(std::lround(ourWork)) + " ms, of the bare loop " +
                std::to_string(std::lround(boundWork)) + " ms");
}

void measurePainting(Report& report, const std::string& target) {
    const auto connection = componentStore().connect(target);
    int painted = 0;
    double last = wallMilliseconds();
    double longest = 0;
    connection->setProgress([&] {
        longest = std::max(longest, wallMilliseconds() - last);
        last = wallMilliseconds();
        ++painted;
    });
    const double whole = leastOf(
        1, [&] { connection->open(listStatement()); }, wallMilliseconds);
    longest = std::max(longest, wallMilliseconds() - last);
    connection->close();
    report.ratio("longest time without a paint", longest, "2 a second", 500, 1.0, "ms");
    report.note("  painted " + std::to_string(painted) + " times in " + std::to_string(std::lround(whole)) + " ms");
}

void measureOpening(Report& report, const std::string& target) {
    constexpr int kCommands = 2000;
    const double took = leastOf(
        5,
        [&] {
            for (int i = 0; i < kCommands; ++i)
                componentStore().connect(target)->close();
        },
        wallMilliseconds);
    report.ratio("open and close, warm", took * 1000 / kCommands, "a fixed time", 50, 1.0, "us");
}

void measureSaving(Report& report, const BenchServer& server, const std::string& target) {
    constexpr int kRuns = 100;
    const Clock computed = [&] { return server.computed(target); };
    const SaveStage items(target);
    MemoryStage windows;
    std::unique_ptr<BareServerLoop> statements;
    double ours = std::numeric_limits<double>::max();
    double bare = ours;
    for (int run = 0; run < kRuns; ++run) {
        ours = std::min(ours, items.save(windows, computed));
        items.restore();
        if (!statements) statements = std::make_unique<BareServerLoop>(target, statementsOf(windows.records()));
        bare = std::min(bare, leastOf(
                                  1, [&] { statements->run(); }, computed));
        items.restore();
    }
    report.ratio("saving a new item", ours, "its statements alone", bare, 1.2, "ms");
}

}  // namespace

void measureServer(Report& report, const std::string& folder, const std::vector<int>& sizes) {
    BenchServer server(Durability::off);
    for (const int goods : sizes) {
        report.heading("PostgreSQL: " + std::to_string(goods) + " goods");
        const std::string target = server.goodsDatabase(folder, goods);
        reportCopy(report, server.copied());
        measureRows(report, target, goods);
        measurePainting(report, target);
        measureSaving(report, server, target);
        if (goods == sizes.front()) measureOpening(report, target);
    }
    report.heading("PostgreSQL on a line of 1 ms each way, among " + std::to_string(sizes.front()) + " goods");
    measureLine(report, server, folder, sizes.front());
}

void measureServerSaves(Report& report, const std::string& folder, const std::vector<int>& sizes) {
    BenchServer server(Durability::off);
    for (const int goods : sizes) {
        report.heading("PostgreSQL: " + std::to_string(goods) + " goods");
        measureSaving(report, server, server.goodsDatabase(folder, goods));
    }
}

}  // namespace orvenmod::bench
