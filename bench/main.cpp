// orvenbench FOLDER SIZE...              makes databases in the folder and prints ratios
// orvenbench --servers FOLDER SIZE...    likewise on servers alone
// orvenbench --only=PART FOLDER SIZE...  one part of it; a wrong name tells them all
// orvenbench --clerks FOLDER GOODS       16 clerks at work for a minute on a server
//
// 0 where every bound is kept, 1 where one is not, 2 for a wrong call or a failure.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "benches.h"
#include "clerks.h"
#include "entry/startup.h"

namespace {

using namespace orvenmod::bench;

using Sizes = std::vector<int>;

constexpr std::string_view kOnly = "--only=";

struct WrongCall : std::invalid_argument {
    WrongCall() : invalid_argument("orvenbench [--servers|--only=PART|--clerks] FOLDER SIZE...") {}
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

/// The lists, windows and saves of each size, and how they grow.
void measureSizes(Report& report, const std::string& folder, const Sizes& sizes) {
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
}

enum class Where { files, servers };

struct Part {
    const char* name;
    Where where;
    std::function<void(Report&, const std::string& folder, const Sizes&)> measure;
    bool partOfAnother = false;
};

std::function<void(Report&, const std::string&, const Sizes&)> ofOneSize(void (*measure)(Report&, const std::string&)) {
    return [measure](Report& report, const std::string& folder, const Sizes&) { measure(report, folder); };
}

const std::vector<Part>& allParts() {
    static const std::vector<Part> kAll = {
        {"lists", Where::files, measureSizes},
        {"arranging", Where::files, ofOneSize([](Report& report, const std::string&) { measureArranging(report); })},
        {"trees", Where::files, ofOneSize([](Report& report, const std::string& folder) {
             measureTree(report, folder);
             measureShownTrees(report, folder);
         })},
        {"moves", Where::files,
         [](Report& report, const std::string& folder, const Sizes& sizes) {
             report.note("among " + std::to_string(sizes.back()) + " goods");
             measureMoves(report, folder, sizes.back());
         }},
        {"guard", Where::files, ofOneSize(measureGuard)},
        {"dictionary", Where::files, ofOneSize(measureDictionary)},
        {"editor", Where::files, ofOneSize([](Report& report, const std::string& folder) {
             measureEditor(report, folder);
             measureContents(report, folder);
         })},
        {"imports", Where::files, ofOneSize(measureImport)},
        {"designer", Where::files, ofOneSize(measureDesigner)},
        {"output", Where::files, ofOneSize(measureOutput)},
        {"statements", Where::files, ofOneSize(measureStatements)},
        {"postgres", Where::servers, measureServer},
        {"postgres-saves", Where::servers, measureServerSaves, true},
        {"odbc", Where::servers, ofOneSize([](Report& report, const std::string&) { measureOdbc(report); })},
    };
    return kAll;
}

std::vector<Part> partsOf(const std::string& mode) {
    std::vector<Part> parts;
    std::string names;
    for (const Part& part : allParts()) {
        names += std::string(names.empty() ? "" : ", ") + part.name;
        const bool named = mode.starts_with(kOnly) && mode.substr(kOnly.size()) == part.name;
        const bool one = !part.partOfAnother && (mode.empty() || (mode == "--servers" && part.where == Where::servers));
        if (named || one) parts.push_back(part);
    }
    if (parts.empty()) throw std::invalid_argument("the parts are " + names);
    return parts;
}

int endOf(Report& report) {
    report.heading(report.kept() ? "every bound is kept" : "NOT every bound is kept");
    return report.kept() ? 0 : 1;
}

int compare(const std::string& folder, const Sizes& sizes, const std::string& mode) {
    const std::vector<Part> parts = partsOf(mode);
    Report report;
    if (mode.empty()) {
        report.heading("a host with 200 MB of ballast");
        measureFirstObject(report);
    }
    orvenmod::startUp();
    for (const Part& part : parts) {
        report.heading(part.name);
        part.measure(report, folder, sizes);
    }
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
    Sizes sizes;
    for (std::size_t i = 1; i < arguments.size(); ++i)
        sizes.push_back(std::stoi(arguments[i]));
    if (mode == "--clerks") return watchClerks(folder, sizes.front());
    if (mode.empty() || mode == "--servers" || mode.starts_with(kOnly)) return compare(folder, sizes, mode);
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
