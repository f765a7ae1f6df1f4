// Folders, clock and paths.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>

#include "platform/desktop/processfolders.h"
#include "platform/desktop/systemclock.h"
#include "support/temporary.h"

namespace orvenmod::platform::desktop {
namespace {

namespace fs = std::filesystem;

class OwnFolders : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(::setenv("XDG_RUNTIME_DIR", base.path().c_str(), 1), 0); }
    void TearDown() override { ::unsetenv("XDG_RUNTIME_DIR"); }

    const test::TemporaryFolder base;
};

TEST_F(OwnFolders, areMadeOnFirstUseAndPrivate) {
    ProcessFolders folders;
    EXPECT_TRUE(fs::is_empty(base.path()));
    const std::string temporary = folders.temporary(), attachments = folders.attachments();
    EXPECT_NE(temporary, attachments);
    EXPECT_EQ(folders.temporary(), temporary);
    for (const std::string& each : {temporary, attachments, fs::path(temporary).parent_path().string()}) {
        EXPECT_EQ(each.rfind(base.path(), 0), 0U);
        EXPECT_EQ(fs::status(each).permissions(), fs::perms::owner_all);
    }
}

TEST_F(OwnFolders, areRemovedAtTheEndWithoutFollowingLinks) {
    const test::TemporaryFolder outside;
    std::ofstream(outside.file("kept.txt")) << "x";
    auto folders = std::make_unique<ProcessFolders>();
    std::ofstream(folders->temporary() + "/Temp001.jpg") << "x";
    fs::create_directory_symlink(outside.path(), folders->attachments() + "/link");
    folders.reset();
    EXPECT_TRUE(fs::is_empty(base.path()));
    EXPECT_TRUE(fs::exists(outside.file("kept.txt")));
}

TEST_F(OwnFolders, areEachProcessesOwn) {
    ProcessFolders one, other;
    EXPECT_NE(one.temporary(), other.temporary());
}

TEST_F(OwnFolders, areMadeAgainWhereSomebodyTookThemAway) {
    ProcessFolders folders;
    fs::remove_all(fs::path(folders.temporary()).parent_path());
    EXPECT_TRUE(fs::is_directory(folders.temporary()));
    EXPECT_TRUE(fs::is_directory(folders.attachments()));
}

TEST_F(OwnFolders, refuseALinkInTheirPlace) {
    const test::TemporaryFolder outside;
    ProcessFolders folders;
    const std::string path = folders.attachments();
    fs::remove(path);
    fs::create_directory_symlink(outside.path(), path);
    EXPECT_THROW(folders.attachments(), std::runtime_error);
}

TEST_F(OwnFolders, lieInTheTemporaryFolderWhereTheSessionHasNone) {
    const test::TemporaryFolder other;
    ::setenv("XDG_RUNTIME_DIR", "/missing/folder", 1);
    const char* const before = ::getenv("TMPDIR");
    const std::string kept = before ? before : "";
    ::setenv("TMPDIR", other.path().c_str(), 1);
    const std::string made = ProcessFolders().temporary();
    if (before) {
        ::setenv("TMPDIR", kept.c_str(), 1);
    } else {
        ::unsetenv("TMPDIR");
    }
    EXPECT_EQ(made.rfind(other.path(), 0), 0U);
}

TEST(SystemClock, tellsTheLocalDay) {
    const auto localDay = [] {
        const std::time_t now = std::time(nullptr);
        char text[16];
        std::strftime(text, sizeof text, "%Y-%m-%d", std::localtime(&now));
        return std::string(text);
    };
    const std::string before = localDay();
    const std::string told = toText(SystemClock().today());
    EXPECT_TRUE(told == before || told == localDay());
}

TEST(NativePath, turnsBackslashesIntoSlashes) {
    EXPECT_EQ(nativePath("/suite\\setupInfo.ini"), "/suite/setupInfo.ini");
    EXPECT_EQ(nativePath("/suite/\\setupInfo.ini"), "/suite/setupInfo.ini");
    EXPECT_EQ(nativePath("C:\\suite\\x"), "C:/suite/x");
    EXPECT_EQ(nativePath("/套件\\物料.txt"), "/套件/物料.txt");
    EXPECT_EQ(nativePath("relative\\x"), "relative/x");
    EXPECT_EQ(nativePath("\\setupInfo.ini"), "/setupInfo.ini");
    EXPECT_EQ(nativePath(""), "");
}

TEST(DateText, isYearMonthDay) {
    EXPECT_EQ(toText({2026, 1, 5}), "2026-01-05");
    EXPECT_LT((Date{2025, 12, 31}), (Date{2026, 1, 1}));
}

}  // namespace
}  // namespace orvenmod::platform::desktop
