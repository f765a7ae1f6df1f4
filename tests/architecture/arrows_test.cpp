// Includes run one way. docs/architecture.md draws the arrows that stand here as a table.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "architecture/sourcetree.h"
#include "support/sourcefolder.h"

namespace orvenmod::tests {
namespace {

using Edges = std::map<std::string, std::set<std::string>>;

/// Each room, and the rooms whose headers it may include besides its own.
const Edges& arrows() {
    static const Edges kArrows = {
        {"include/orvenmod", {}},
        {"src/store", {}},
        {"src/store/tsql", {"src/store"}},
        {"src/store/sqlite", {"src/store", "src/store/tsql"}},
        {"src/store/server", {"src/store", "src/store/tsql"}},
        {"src/store/odbc", {"src/store", "src/store/tsql", "src/store/server"}},
        {"src/store/postgres", {"src/store", "src/store/tsql", "src/store/server"}},
        {"src/store/copy", {"src/store", "src/store/tsql"}},
        {"src/platform", {}},
        {"src/platform/model", {"src/platform"}},
        {"src/platform/report", {"src/platform"}},
        {"src/platform/sheet", {"src/platform"}},
        {"src/platform/desktop", {"src/platform"}},
        {"src/platform/memory", {"src/platform", "src/platform/model", "src/platform/report"}},
        {"src/platform/qt", {"src/platform", "src/platform/model", "src/platform/report"}},
        {"src/frame", {"src/store", "src/platform"}},
        {"src/hierarchy", {"src/frame", "src/store", "src/platform"}},
        {"src/editor", {"src/frame", "src/store", "src/platform"}},
        {"src/transfer",
         {"src/editor", "src/hierarchy", "src/frame", "src/store", "src/platform", "src/platform/model",
          "src/platform/sheet"}},
        {"src/designer", {"src/frame", "src/store", "src/platform"}},
        {"src/dictionary", {"src/hierarchy", "src/frame", "src/store", "src/platform", "src/platform/sheet"}},
        {"src/browser",
         {"src/transfer", "src/editor", "src/hierarchy", "src/frame", "src/store", "src/platform",
          "src/platform/sheet"}},
        {"src/entry",
         {"include/orvenmod", "src/browser", "src/dictionary", "src/designer", "src/frame", "src/store",
          "src/store/tsql", "src/store/sqlite", "src/store/odbc", "src/store/postgres", "src/platform/desktop",
          "src/platform/qt"}},
        {"src/tools", {"src/entry", "src/store", "src/store/copy", "src/platform/desktop"}},
    };
    return kArrows;
}

/// The innermost room that holds the path, "" for none.
std::string roomOf(const std::string& path) {
    std::string best;
    for (const auto& [room, targets] : arrows()) {
        if (startsWith(path, room + "/") && room.size() > best.size()) best = room;
    }
    return best;
}

std::vector<SourceFile> product() { return readSources({"include", "src"}); }

/// The path of an include of ours from the root of the repository, "" for one of a library.
std::string ownPath(const Include& include) {
    if (startsWith(include.path, "orvenmod/")) return "include/" + include.path;
    return include.angled ? "" : "src/" + include.path;
}

std::set<std::string> reachedFrom(const Edges& edges, const std::string& place) {
    std::set<std::string> reached;
    const std::function<void(const std::string&)> visit = [&](const std::string& from) {
        const auto targets = edges.find(from);
        if (targets == edges.end()) return;
        for (const std::string& target : targets->second) {
            if (reached.insert(target).second) visit(target);
        }
    };
    visit(place);
    return reached;
}

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
}

bool isQt(const std::string& header) {
    return header.size() > 1 && header[0] == 'Q' && (header[1] == 't' || (header[1] >= 'A' && header[1] <= 'Z'));
}

TEST(Arrows, everySourceStandsInARoom) {
    for (const SourceFile& file : product()) {
        EXPECT_NE(roomOf(file.path), "") << file.path;
    }
}

TEST(Arrows, aRoomIncludesOnlyTheRoomsItsArrowsReach) {
    for (const SourceFile& file : product()) {
        const std::string room = roomOf(file.path);
        for (const Include& include : file.includes) {
            const std::string target = roomOf(ownPath(include));
            if (target.empty() || target == room) continue;
            EXPECT_TRUE(arrows().count(room) != 0 && arrows().at(room).count(target) != 0)
                << file.path << " includes " << include.path;
        }
    }
}

TEST(Arrows, everyArrowIsUsed) {
    Edges used;
    for (const SourceFile& file : product()) {
        for (const Include& include : file.includes)
            used[roomOf(file.path)].insert(roomOf(ownPath(include)));
    }
    for (const auto& [room, targets] : arrows()) {
        for (const std::string& target : targets)
            EXPECT_EQ(used[room].count(target), 1U) << room << " includes nothing of " << target;
    }
}

/// What the drawing's elements of one kind are named.
std::vector<std::string> drawn(const std::string& element) {
    std::ifstream stream(test::sourceFile("docs/rooms.svg"));
    const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    const std::regex named("<" + element + " [^>]*><title>([^<]*)</title>");
    std::vector<std::string> names;
    for (std::sregex_iterator each(text.begin(), text.end(), named); each != std::sregex_iterator(); ++each)
        names.push_back((*each)[1]);
    return names;
}

TEST(Arrows, theDrawingHasEveryRoomAndNoOther) {
    std::vector<std::string> rooms;
    for (const auto& [room, targets] : arrows())
        rooms.push_back(room);
    EXPECT_THAT(drawn("rect"), testing::UnorderedElementsAreArray(rooms));
}

TEST(Arrows, theDrawingLeadsWhereTheTableDoes) {
    Edges lines;
    for (const std::string& name : drawn("path")) {
        const std::size_t to = name.find(" to ");
        ASSERT_NE(to, std::string::npos) << name;
        const std::string room = name.substr(0, to);
        const std::string target = name.substr(to + 4);
        EXPECT_EQ(arrows().count(room) == 0 ? 0U : arrows().at(room).count(target), 1U) << "no arrow: " << name;
        lines[room].insert(target);
    }
    for (const auto& [room, targets] : arrows()) {
        const std::set<std::string> reached = reachedFrom(lines, room);
        for (const std::string& target : targets)
            EXPECT_EQ(reached.count(target), 1U) << "the drawing doesn't lead from " << room << " to " << target;
    }
}

TEST(Arrows, quotedIncludesAreRootedAtTheSourceFolder) {
    for (const SourceFile& file : product()) {
        for (const Include& include : file.includes) {
            if (!include.angled) {
                EXPECT_NE(roomOf(ownPath(include)), "") << file.path << " includes \"" << include.path << '"';
            }
        }
    }
}

TEST(Arrows, onlyTheQtRoomAndTheSampleSuiteIncludeQt) {
    for (const SourceFile& file : product()) {
        if (roomOf(file.path) == "src/platform/qt") continue;
        for (const Include& include : file.includes) {
            EXPECT_FALSE(isQt(include.path)) << file.path << " includes " << include.path;
        }
    }
}

TEST(Arrows, theHeaderOfTheQtRoomThatOthersIncludeIsFreeOfQt) {
    for (const SourceFile& file : product()) {
        if (file.path != "src/platform/qt/qttoolkit.h") continue;
        for (const Include& include : file.includes) {
            EXPECT_FALSE(isQt(include.path)) << file.path << " includes " << include.path;
        }
    }
}

TEST(Arrows, onlyTheToolkitsSharedModelsAskForTheLettersOfTheChinese) {
    for (const SourceFile& file : product()) {
        for (const Include& include : file.includes) {
            if (startsWith(include.path, "unicode/")) {
                EXPECT_EQ(roomOf(file.path), "src/platform/model") << file.path << " includes " << include.path;
            }
        }
    }
}

TEST(Arrows, eachNativeStoreHeaderStaysInItsRoom) {
    const std::map<std::string, std::string> homes = {
        {"sqlite3.h", "src/store/sqlite"}, {"sql.h", "src/store/odbc"},      {"sqlext.h", "src/store/odbc"},
        {"sqltypes.h", "src/store/odbc"},  {"sqlucode.h", "src/store/odbc"}, {"libpq-fe.h", "src/store/postgres"}};
    for (const SourceFile& file : product()) {
        for (const Include& include : file.includes) {
            const auto home = homes.find(include.path);
            if (home != homes.end()) {
                EXPECT_EQ(roomOf(file.path), home->second) << file.path << " includes " << include.path;
            }
        }
    }
}

TEST(Arrows, aHostSeesOnlyTheStandardLibrariesOfCppAndCAndTheLoader) {
    const std::set<std::string> others = {"dlfcn.h", "stddef.h", "stdint.h"};
    for (const SourceFile& file : readSources({"include"})) {
        for (const Include& include : file.includes) {
            EXPECT_TRUE(include.angled) << file.path << " includes " << include.path;
            EXPECT_TRUE(startsWith(include.path, "orvenmod/") || include.path.find('.') == std::string::npos ||
                        others.count(include.path) != 0)
                << file.path << " includes " << include.path;
        }
    }
}

void expectNoCircle(const Edges& edges) {
    std::set<std::string> done;
    std::set<std::string> open;
    const std::function<void(const std::string&)> visit = [&](const std::string& place) {
        if (done.count(place) != 0) return;
        ASSERT_TRUE(open.insert(place).second) << "a circle through " << place;
        const auto targets = edges.find(place);
        if (targets != edges.end()) {
            for (const std::string& target : targets->second)
                visit(target);
        }
        open.erase(place);
        done.insert(place);
    };
    for (const auto& [place, targets] : edges)
        visit(place);
}

TEST(Arrows, noHeadersIncludeEachOtherInACircle) {
    Edges edges;
    for (const SourceFile& file : product()) {
        for (const Include& include : file.includes) {
            if (!ownPath(include).empty()) edges[file.path].insert(ownPath(include));
        }
    }
    expectNoCircle(edges);
}

// A room of several folders (src/tools) may hide a circle from the table of rooms.
TEST(Arrows, noFoldersIncludeEachOtherInACircle) {
    Edges edges;
    for (const SourceFile& file : product()) {
        const std::string folder = folderOf(file.path);
        for (const Include& include : file.includes) {
            const std::string target = folderOf(ownPath(include));
            if (!target.empty() && target != folder) edges[folder].insert(target);
        }
    }
    EXPECT_EQ(edges.count("src/browser"), 1U) << "no folder was read";
    expectNoCircle(edges);
}

}  // namespace
}  // namespace orvenmod::tests
