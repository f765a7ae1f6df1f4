// A list of goods brought in among 100 thousand others: checked and stored, in rows a second, and against the
// statements of it. What was brought in is taken out again.
#include <cmath>
#include <fstream>

#include "bareloop.h"
#include "benches.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "memorystage.h"
#include "peak.h"
#include "savestage.h"
#include "stage.h"
#include "transfer/importsession.h"

namespace orvenmod::bench {
namespace {

constexpr int kGoods = 100000;
constexpr int kRows = 100000;
// The bare loop keeps a prepared statement for each that was sent.
constexpr int kComparedRows = 5000;

class NoProgress : public platform::Progress {
public:
    bool advance(int) override { return true; }
};

std::string listOf(const std::string& folder, int rows) {
    std::string path = folder + "/import.csv";
    std::ofstream file(path);
    file << "短代码,名称,规格型号,计量单位,最低库存,最大库存,品牌,产地,条码,参考进价,参考售价,建档日期,停售日期,"
            "主供应商,所属分类,"
            "备注\n";
    for (int row = 0; row < rows; ++row) {
        const std::string number = std::to_string(1000000 + row);
        file << 'N' << number << ",新货品" << number << ",M" << row % 40 << ",个,5,500,品牌" << row % 9 << ",上海,69"
             << number << ",1.25,2.5,2024-06-07,2026-12-31,,,无\n";
    }
    return path;
}

struct Times {
    double checked = 0;
    double stored = 0;
};

Times bringIn(const std::string& path, std::size_t expected) {
    NoProgress progress;
    ImportSession session({2026, 11, 20});
    openDB();
    session.readFields();
    session.readFile({.path = path}, [](std::uint64_t, std::uint64_t) {});
    session.matchColumns("");
    Times times;
    times.checked = leastOf(1, [&] { session.check(progress); });
    if (session.count(RowState::added) != expected)
        throw std::runtime_error("the import refuses rows: " + session.reasonOf(session.refused().at(0)));
    times.stored = leastOf(1, [&] { session.run(progress); });
    closeDB();
    if (!session.result().reasons.empty()) throw std::runtime_error(session.result().reasons.begin()->second);
    return times;
}

/// What the check of a long list holds beside its rows.
void measureCheck(Report& report, const std::string& folder) {
    constexpr int kMany = 1000000;
    // A byte for its state, eight for its code, and what a growing list has beyond that.
    constexpr double kMostBytes = 24;
    constexpr double kMiB = 1 << 20;
    const std::string path = listOf(folder, kMany);
    NoProgress progress;
    ImportSession session({2026, 11, 20});
    openDB();
    session.readFields();
    const double read = mostMemory([&] { session.readFile({.path = path}, [](std::uint64_t, std::uint64_t) {}); });
    session.matchColumns("");
    const double checked = mostMemory([&] { session.check(progress); });
    closeDB();
    report.note("a million rows of 15 fields: " + std::to_string(std::lround(read)) + " MiB while they are read");
    report.ratio("their check beside them", checked, "24 bytes a row", kMostBytes * kMany / kMiB, 1, "MiB");
}

}  // namespace

void measureImport(Report& report, const std::string& folder) {
    constexpr int kFewGoods = 1000;
    SaveStage(goodsDatabase(folder, kFewGoods)).chooseGoods();
    measureCheck(report, folder);

    const std::string target = goodsDatabase(folder, kGoods);
    const SaveStage items(target);
    items.chooseGoods();
    const Times all = bringIn(listOf(folder, kRows), kRows);
    items.restore();
    const double seconds = (all.checked + all.stored) / 1000;
    report.note("100 thousand rows of 15 fields: checked in " + std::to_string(all.checked / 1000) + " s, stored in " +
                std::to_string(all.stored / 1000) + " s");
    report.ratio("rows a second that are wanted", 5000, "rows a second checked and stored", kRows / seconds, 1,
                 "rows/s");

    const std::string path = listOf(folder, kComparedRows);
    const Times some = bringIn(path, kComparedRows);
    items.restore();
    std::vector<std::string> statements;
    {
        MemoryStage traced;
        bringIn(path, kComparedRows);
        statements = statementsOf(traced.records());
    }
    items.restore();
    BareLoop bare(target, statements);
    const double alone = leastOf(1, [&] { bare.run(); });
    items.restore();
    report.ratio("5 thousand rows brought in", some.checked + some.stored, "their statements alone", alone, 1.5, "ms");
}

}  // namespace orvenmod::bench
