// orvenbench FOLDER SIZE...            makes databases in the folder and prints ratios
// orvenbench --servers FOLDER SIZE...  likewise on servers alone
//
// 0 where every bound is kept, 1 where one is not, 2 for a wrong call or a failure.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "benches.h"
#include "entry/startup.h"

namespace {

using namespace orvenmod::bench;

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
        compare("clearZero", small.zero, large.zero);
        compare("saving a new item", small.save, large.save);
    }
}

void measureFile(Report& report, const std::string& folder, const std::vector<int>& sizes) {
    std::vector<ListTimes> all;
    for (const int goods : sizes) {
        report.heading(std::to_string(goods) + " goods");
        all.push_back(measureList(report, folder, goods));
        measureWindow(report, folder, goods, all.back().bare);
        all.back().save = measureSave(report, folder, goods);
    }
    compareSizes(report, all);
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
    report.heading("class designer");
    measureDesigner(report, folder);
    report.heading("export and preview");
    measureOutput(report, folder);
    report.heading("statements");
    measureStatements(report, folder);
}

int run(std::vector<std::string> arguments) {
    const bool serversAlone = arguments.front() == "--servers";
    if (serversAlone) arguments.erase(arguments.begin());
    const std::string folder = arguments.front();
    std::vector<int> sizes;
    for (std::size_t i = 1; i < arguments.size(); ++i)
        sizes.push_back(std::stoi(arguments[i]));
    std::filesystem::create_directories(folder);
    orvenmod::startUp();
    Report report;
    if (!serversAlone) measureFile(report, folder, sizes);
    measureServer(report, folder, sizes);
    report.heading(report.kept() ? "every bound is kept" : "NOT every bound is kept");
    return report.kept() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < (arguments.empty() || arguments.front() != "--servers" ? 2U : 3U)) {
        std::fputs("orvenbench [--servers] FOLDER SIZE...\n", stderr);
        return 2;
    }
    try {
        return run(arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "orvenbench: %s\n", failure.what());
        return 2;
    }
}
