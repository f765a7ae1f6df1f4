// What a reader may rely on in every file.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "architecture/sourcetree.h"
#include "support/sourcefolder.h"

namespace orvenmod::tests {
namespace {

std::vector<SourceFile> everything() { return readSources({"include", "src", "examples", "tests", "bench", "fuzz"}); }

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

constexpr const char* kDocuments[] = {
    "README.md",       "README.zh.md",         "CONTRIBUTING.md",   "docs/architecture.md",
    "docs/servers.md", "docs/dependencies.md", "docs/languages.md", "docs/report-template.md",
    "docs/security.md"};
constexpr const char* kFolders[] = {"src",      "include", "tests", "bench", "examples",
                                    "bindings", "scripts", "docs",  "cmake", "fuzz"};

std::vector<std::string> found(const std::string& document, const std::regex& pattern) {
    std::ifstream stream(test::sourceFile(document));
    const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    std::vector<std::string> names;
    for (std::sregex_iterator each(text.begin(), text.end(), pattern); each != std::sregex_iterator(); ++each)
        names.push_back((*each)[1]);
    return names;
}

TEST(Style, everyPathThatTheDocumentsNameIsThere) {
    namespace fs = std::filesystem;
    const std::regex path("`((?:src|include|tests|bench|examples|bindings|scripts|docs)/[^` *{]*)`");
    const std::regex link(R"(\]\((?!https?:|#)([^)#]+)[^)]*\))");
    std::size_t named = 0;
    for (const std::string document : kDocuments) {
        for (const std::string& name : found(document, path)) {
            EXPECT_TRUE(fs::exists(test::sourceFile(name))) << document << " names " << name;
            ++named;
        }
        const fs::path folder = fs::path(test::sourceFile(document)).parent_path();
        for (const std::string& target : found(document, link))
            EXPECT_TRUE(fs::exists(folder / target)) << document << " links to " << target;
    }
    EXPECT_GT(named, 20U);
}

// A file named without its folder, or from somewhere below the root: `emitter.h`, `model/cellinput.h`.
TEST(Style, everyBareFileNameOfTheDocumentsIsThatOfAFile) {
    namespace fs = std::filesystem;
    std::vector<std::string> files;
    for (const char* folder : kFolders) {
        for (const auto& entry : fs::recursive_directory_iterator(test::sourceFile(folder)))
            files.push_back("/" + fs::relative(entry.path(), test::sourceFile("")).generic_string());
    }
    const std::regex name(R"(`<?((?:\w+/)*[\w-]+\.(?:h|cpp|inc|md|svg|txt|sql|cmake))>?`)");
    std::size_t named = 0;
    for (const std::string document : kDocuments) {
        for (const std::string& wanted : found(document, name)) {
            const bool there = std::any_of(files.begin(), files.end(),
                                           [&](const std::string& file) { return file.ends_with("/" + wanted); });
            EXPECT_TRUE(there) << document << " names " << wanted;
            ++named;
        }
    }
    EXPECT_GT(named, 20U);
}

}  // namespace
}  // namespace orvenmod::tests
