// orvenbench FOLDER SIZE...            makes databases in the folder and prints ratios
// orvenbench --servers FOLDER SIZE...  likewise on servers alone
// orvenbench --clerks FOLDER GOODS     16 clerks at work for a minute on a server
//
// 0 where every bound is kept, 1 where one is not, 2 for a wrong call or a failure.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "benches.h"
#include "clerks.h"
#include "entry/startup.h"

namespace {

using namespace orvenmod::bench;

enum class Stores { all, servers };

struct WrongCall : std::invalid_argument {
    WrongCall() : invalid_argument("orvenbench [--servers|--clerks] FOLDER SIZE...") {}
};

/// Ten times the rows may take ten times as long, and as they outgrow the database's cache up to four times that: a row
/// that is found by its key is then read from the file. Work that grew with the square would take a hundred times.
void compareSizes(Report& report, const std::vector<ListTimes>& all) {
    constexpr double kMostGrowth = 4.0;
    for (std::size_t i = 1; i < all.size(); ++i) {
        const ListTimes& small = all[i - 1];
        const ListTimes& large = all[i];
        const double factor = static_cast<double>(large.goods) / small.goods;
        report.heading(std::to_string(large.goods) + " goods against " + std::to_string(small.goods));
        const auto compare = [&](const char* name, double before, double after) {
            report.ratio(name, after, "as many rows of the smaller", before * factor, kMostGrowth, "ms");
        };
        compare("bare loop", small.bare, large.bare);
        compare("getListInfo, columns and rows", small.list, large.list);
        compare("findInfo on a category", small.node, large.node);
        compare("search with 包含", small.search, large.search);
        compare("saving a new item", small.save, large.save);
    }
}

void measureFile(Report& report, const std::string& folder, const std::vector<int>& sizes) {
    std::vector<ListTimes> all;
    for (const int goods : sizes) {
        report.heading(std::to_string(goods) + " goods");
        all.push_back(measureList(report, folder, goods));
        measureWindow(report, folder, goods, all.back().bare);
        measureScrolling(report, folder, goods);
        if (goods >= kMany) measureWalks(report, folder, goods);
        all.back().save = measureSave(report, folder, goods);
    }
    compareSizes(report, all);
    report.heading("sorting and narrowing");
    measureArranging(report);
    report.heading("tree");
    measureTree(report, folder);
    measureShownTrees(report, folder);
    report.heading("moves among " + std::to_string(sizes.back()) + " goods");
    measureMoves(report, folder, sizes.back());
    report.heading("guard");
    measureGuard(report, folder);
    report.heading("dictionary");
    measureDictionary(report, folder);
    report.heading("editor");
    measureEditor(report, folder);
    measureContents(report, folder);
    report.heading("lists brought in");
    measureImport(report, folder);
    report.heading("class designer");
    measureDesigner(report, folder);
    report.heading("export and preview");
    measureOutput(report, folder);
    report.heading("statements");
    measureStatements(report, folder);
}

int endOf(Report& report) {
    report.heading(report.kept() ? "every bound is kept" : "NOT every bound is kept");
    return report.kept() ? 0 : 1;
}

int compare(const std::string& folder, const std::vector<int>& sizes, Stores stores) {
    Report report;
    if (stores == Stores::all) {
        report.heading("a host with 200 MB of ballast");
        measureFirstObject(report);
    }
    orvenmod::startUp();
    if (stores == Stores::all) measureFile(report, folder, sizes);
    measureServer(report, folder, sizes);
    report.heading("a server over ODBC");
    measureOdbc(report);
    return endOf(report);
}

int watchClerks(const std::string& folder, int goods) {
    constexpr int kSeconds = 60;
    orvenmod::startUp();
    Report report;
    measureClerks(report, folder, goods, kSeconds);
    return endOf(report);
}

int run(std::vector<std::string> arguments) {
    std::string mode;
    if (!arguments.empty() && arguments.front().starts_with("--")) {
        mode = arguments.front();
        arguments.erase(arguments.begin());
    }
    if (mode == "--clerk") return workAsClerk(arguments);
    if (arguments.size() < 2 || (mode == "--clerks" && arguments.size() != 2)) throw WrongCall();
    const std::string folder = arguments.front();
    std::filesystem::create_directories(folder);
    std::vector<int> sizes;
    for (std::size_t i = 1; i < arguments.size(); ++i)
        sizes.push_back(std::stoi(arguments[i]));
    if (mode == "--clerks") return watchClerks(folder, sizes.front());
    if (mode == "--servers") return compare(folder, sizes, Stores::servers);
    if (mode.empty()) return compare(folder, sizes, Stores::all);
    throw WrongCall();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "orvenbench: %s\n", failure.what());
        return 2;
    }
}
