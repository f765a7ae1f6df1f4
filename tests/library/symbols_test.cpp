// What the shared library shows is what the public headers tell, and nothing else.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <orvenmod/version.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/sourcefolder.h"

namespace orvenmod {
namespace {

using testing::IsEmpty;

std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What the headers mark as shown: functions, and classes each with its body.
struct Marked {
    std::set<std::string> functions;
    std::map<std::string, std::string> classes;
};

void readHeader(const std::string& text, Marked& marked) {
    static const std::regex function(R"(\nORVENMOD_API [^;{(]*?(\w+)\()");
    static const std::regex type(R"(\nclass ORVENMOD_API (\w+)[^{;]*\{)");
    for (std::sregex_iterator at(text.begin(), text.end(), function), end; at != end; ++at)
        marked.functions.insert((*at)[1]);
    for (std::sregex_iterator at(text.begin(), text.end(), type), end; at != end; ++at) {
        const auto begin = static_cast<std::size_t>(at->position());
        marked.classes[(*at)[1]] = text.substr(begin, text.find("\n};", begin) - begin);
    }
}

Marked readHeaders() {
    Marked marked;
    for (const auto& file : std::filesystem::directory_iterator(test::sourceFile("include/orvenmod")))
        readHeader(contentsOf(file.path()), marked);
    return marked;
}

std::vector<std::string> linesOf(const std::string& command) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"), &::pclose);
    std::string text;
    std::array<char, 4096> part{};
    for (std::size_t got = 0; (got = std::fread(part.data(), 1, part.size(), pipe.get())) > 0;)
        text.append(part.data(), got);
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// The names of the dynamic symbols, as C++ writes them.
std::vector<std::string> symbols() {
    std::vector<std::string> names;
    static const std::regex shape(R"(^[0-9a-f]+ (\w) (.*?)@.*$)");
    for (const std::string& line : linesOf("nm -D --defined-only -C '" ORVENMOD_LIBRARY "'")) {
        std::smatch parts;
        // An absolute one is the name of the version.
        if (std::regex_match(line, parts, shape) && parts[1] != "A") names.push_back(parts[2]);
    }
    return names;
}

/// Whether the headers tell the symbol; notes which of their names it is.
bool isTold(const std::string& symbol, const Marked& marked, std::set<std::string>& seen) {
    static const std::regex type(R"((?:typeinfo|typeinfo name|vtable) for orvenmod::(\w+))");
    static const std::regex member(R"(orvenmod::(\w+)::(~?\w+|operator=)(?:\[abi:cxx11\])?\(.*)");
    static const std::regex function(R"((?:orvenmod::)?(\w+)(?:\[abi:cxx11\])?(?:\(.*)?)");
    std::smatch parts;
    if (std::regex_match(symbol, parts, type) && marked.classes.count(parts[1]) != 0) {
        seen.insert(parts[1]);
        return true;
    }
    if (std::regex_match(symbol, parts, member)) {
        const auto owner = marked.classes.find(parts[1]);
        if (owner == marked.classes.end()) return false;
        seen.insert(parts[1]);
        return owner->second.find(parts[2].str() + "(") != std::string::npos;
    }
    if (!std::regex_match(symbol, parts, function) || marked.functions.count(parts[1]) == 0) return false;
    seen.insert(parts[1]);
    return true;
}

TEST(SharedLibrary, showsWhatThePublicHeadersTellAndNothingElse) {
    const Marked marked = readHeaders();
    std::set<std::string> seen;
    std::vector<std::string> untold;
    for (const std::string& symbol : symbols()) {
        if (!isTold(symbol, marked, seen)) untold.push_back(symbol);
    }
    EXPECT_THAT(untold, IsEmpty()) << "is in no header";
    std::set<std::string> told = marked.functions;
    for (const auto& [name, body] : marked.classes)
        told.insert(name);
    EXPECT_EQ(seen, told) << "each name of the headers is in the library";
    EXPECT_EQ(seen.size(), told.size());
    EXPECT_GT(told.size(), 15U);
}

TEST(SharedLibrary, bearsItsVersionInOnePlace) {
    const std::string number = version();
    std::smatch parts;
    const std::string project = contentsOf(test::sourceFile("CMakeLists.txt"));
    ASSERT_TRUE(std::regex_search(project, parts, std::regex(R"(project\(orvenmod VERSION ([0-9.]+))")));
    EXPECT_EQ(number, parts[1]);
    const std::string changes = contentsOf(test::sourceFile("CHANGELOG.md"));
    ASSERT_TRUE(std::regex_search(changes, parts, std::regex(R"(\n## ([0-9.]+) - \d{4}-\d\d-\d\d\n)")));
    EXPECT_EQ(number, parts[1]) << "the changelog begins with this version";
    EXPECT_EQ(std::filesystem::read_symlink(ORVENMOD_LIBRARY ".0"), "liborvenmod.so." + number);
}

}  // namespace
}  // namespace orvenmod
