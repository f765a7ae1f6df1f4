// The export of the manager's list, read back by a reader that isn't ours.
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "dictionary/dictionarytest.h"
#include "support/spreadsheet.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

const std::string kExported = "导出成功!";

class DictionaryExport : public DictionaryTest {
protected:
    std::string file(const std::string& name) { return database().folder().file(name); }
    /// Lists dictionary 501 and exports it.
    void exportTo(const std::string& path, bool told = true) {
        stage.openManager([&](User& user) {
            user.clickNode("tv1", "D501");
            user.chooseFile(path);
            if (told) user.answer(MessageKind::information, kExported);
            user.clickTool("Excel");
            EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
        });
    }
};

TEST_F(DictionaryExport, writesEveryCellAsTextWithIdAndHeading) {
    database().execute("update tblSubType set fNumber='007',fName='=1+1' where fItemId=2");
    exportTo(file("单位.xls"));
    EXPECT_EQ(readSpreadsheet(file("单位.xls")),
              (Rows{{"", "代码", "名称"}, {"2", "007", "=1+1"}, {"1", "01", "个"}, {"3", "03", "吨"}}));
    EXPECT_EQ(readSpreadsheetFormats(file("单位.xls")),
              (Rows{{"", "@", "@"}, {"@", "@", "@"}, {"@", "@", "@"}, {"@", "@", "@"}}));
}

TEST_F(DictionaryExport, ofAnEmptyListWritesTheHeading) {
    stage.openManager([this](User& user) {
        user.chooseFile(file("none.xls"));
        user.answer(MessageKind::information, kExported);
        user.clickTool("Excel");
    });
    EXPECT_EQ(readSpreadsheet(file("none.xls")), (Rows{{"", "代码", "名称"}}));
}

TEST_F(DictionaryExport, takesThePlaceOfAFileOfThatName) {
    std::ofstream(file("old.xls")) << "old";
    exportTo(file("old.xls"));
    EXPECT_EQ(readSpreadsheet(file("old.xls")).size(), 4U);
}

TEST_F(DictionaryExport, aCancelledDialogWritesAndTellsNothing) {
    exportTo("", false);
    EXPECT_TRUE(script().messages().empty());
}

TEST_F(DictionaryExport, aFolderAsTheFileIsPassedOver) {
    fs::create_directory(file("folder.xls"));
    exportTo(file("folder.xls"));
    EXPECT_TRUE(fs::is_directory(file("folder.xls")));
    EXPECT_TRUE(fs::is_empty(file("folder.xls")));
}

TEST_F(DictionaryExport, aFolderThatIsMissingIsPassedOver) {
    exportTo(file("gone/unit.xls"));
    EXPECT_FALSE(fs::exists(file("gone")));
}

TEST_F(DictionaryExport, aFullDiskLeavesNoFileAndTheOldOne) {
    std::ofstream(file("old.xls")) << "old";
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "this system has no full disk to write to";
    fs::create_symlink("/dev/full", file("full.xls"));
    exportTo(file("full.xls"));
    exportTo("/dev/full/unit.xls");
    EXPECT_EQ(Stage::contents(file("old.xls")), "old");
    EXPECT_FALSE(fs::exists("/dev/full/unit.xls"));
}

/// While it lives no file grows beyond a kilobyte, as on a disk that is full.
class FullDisk {
public:
    FullDisk() : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{1024, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int);
};

TEST_F(DictionaryExport, aDiskThatFillsUpLeavesNoFileOrTheOldOne) {
    std::ofstream(file("old.xls")) << "old";
    stage.openManager([this](User& user) {
        user.clickNode("tv1", "D501");
        const FullDisk full;
        for (const char* name : {"old.xls", "new.xls"}) {
            user.chooseFile(file(name));
            user.answer(MessageKind::information, kExported);
            user.clickTool("Excel");
        }
    });
    EXPECT_EQ(Stage::contents(file("old.xls")), "old");
    for (const auto& entry : fs::directory_iterator(database().folder().path())) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(name == "old.xls" || name.starts_with("suite.db")) << name;
    }
}

}  // namespace
}  // namespace orvenmod::test
