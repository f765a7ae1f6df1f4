// What a reader may rely on in every file.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "architecture/sourcetree.h"
#include "support/sourcefolder.h"

namespace orvenmod::tests {
namespace {

std::vector<SourceFile> everything() { return readSources({"include", "src", "examples", "tests", "bench"}); }

TEST(Style, noFileIsLongerThanFiveHundredLines) {
    for (const SourceFile& file : everything()) {
        EXPECT_LE(file.lines.size(), 500U) << file.path;
    }
}

TEST(Style, everyHeaderGuardsItselfAndOpensWithAComment) {
    for (const SourceFile& file : readSources({"include", "src"})) {
        if (file.path.substr(file.path.size() - 2) != ".h") continue;
        ASSERT_FALSE(file.lines.empty()) << file.path;
        EXPECT_TRUE(startsWith(file.lines.front(), "//")) << file.path;
        EXPECT_NE(std::find(file.lines.begin(), file.lines.end(), "#pragma once"), file.lines.end()) << file.path;
    }
}

TEST(Style, noCodeIsSwitchedOff) {
    const std::string switchedOff = std::string("#if") + " 0";
    for (const SourceFile& file : everything()) {
        for (const std::string& line : file.lines) {
            EXPECT_FALSE(startsWith(line, switchedOff)) << file.path;
        }
    }
}

TEST(Style, everyTestFileIsInATarget) {
    namespace fs = std::filesystem;
    for (const SourceFile& file : readSources({"tests"})) {
        if (file.path.find("_test.cpp") == std::string::npos) continue;
        fs::path folder = fs::path(test::sourceFile(file.path)).parent_path();
        while (!fs::exists(folder / "CMakeLists.txt"))
            folder = folder.parent_path();
        std::ifstream stream(folder / "CMakeLists.txt");
        const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        EXPECT_NE(text.find(fs::path(file.path).filename().string()), std::string::npos) << file.path;
    }
}

TEST(Style, everyFileThatTheDocumentsNameIsThere) {
    namespace fs = std::filesystem;
    const std::regex path("`((?:src|include|tests|bench|examples|scripts|docs)/[^` *{]*)`");
    int named = 0;
    for (const char* document : {"docs/architecture.md", "CONTRIBUTING.md"}) {
        std::ifstream stream(test::sourceFile(document));
        const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        for (std::sregex_iterator each(text.begin(), text.end(), path); each != std::sregex_iterator(); ++each, ++named)
            EXPECT_TRUE(fs::exists(test::sourceFile((*each)[1]))) << document << " names " << (*each)[1];
    }
    EXPECT_GT(named, 20);
}

}  // namespace
}  // namespace orvenmod::tests
