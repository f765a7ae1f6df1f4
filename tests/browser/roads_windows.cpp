// The list whose rows are read when somebody looks: all that is done to it, and a row that can't be read.
#include <filesystem>

#include "browser/roads.h"
#include "support/sourcefolder.h"
#include "support/spreadsheet.h"
#include "support/windowedrows.h"

namespace orvenmod::test {
namespace {

using platform::ListGrid;

const std::string kFault = "注入的故障";
constexpr int kNumberColumn = 5;  // the smallest quantity

void addGoods(Database& database, int count) {
    for (int i = 0; i < count; ++i)
        database.addItem(3, 1000 + i, "01.01." + std::to_string(1000 + i), "垫圈" + std::to_string(i % 7), 13);
    database.execute("update ICItem set fMinQty=fItemId % 5, fModel=null where fItemId>=1000");
}

/// Some thousands of goods behind the keys of many more: what the embedded store reads by keys.
int addLongList(Database& database) {
    constexpr int kFirst = 1000;
    constexpr int kAll = 1 << 15;
    constexpr int kKept = 5000;
    database.addItem(3, kFirst, "05.1000", "垫圈", 14);
    for (int count = 1; count < kAll; count *= 2) {
        const std::string id = "fItemId+" + std::to_string(count);
        database.execute("insert into ICItem(fItemId,fNumber,fName,fMinQty) select " + id +
                         ",'05.'+convert(varchar(10)," + id + "),fName," + id +
                         " from ICItem where fItemId>=" + std::to_string(kFirst));
    }
    database.execute("delete from ICItem where fItemId>=" + std::to_string(kFirst) + " and fItemId<" +
                     std::to_string(kFirst + kAll - kKept));
    return kKept;
}

/// What the user gets to see of the list in every way that there is.
struct Seen {
    Rows shown, sorted, narrowed, category, found;
    std::string copied, status;
    Rows exported;
    bool operator==(const Seen&) const = default;
};

Seen lookAtAll(BrowserStage& stage, const std::string& file) {
    Seen seen;
    stage.open(kManagement, [&](User& user) {
        seen.shown = listRows(user, kNumberColumn);
        user.clickHeading("vsf1", kNumberColumn);
        seen.sorted = listRows(user, kNumberColumn);
        user.chooseFile(file);
        user.answer(MessageKind::information, "导出成功!");
        user.clickTool("Excel");
        seen.exported = readSpreadsheet(file);
        auto& grid = user.control<ListGrid>("vsf1");
        for (int row = 1; row < grid.rowCount(); row += 2)
            grid.setSelected(row, true);
        grid.setFocus();
        user.press("Ctrl+C");
        seen.copied = user.copied();
        seen.status = grid.status();
        grid.narrow("垫圈3");
        seen.narrowed = listRows(user, kNumberColumn);
        user.clickNode("tv1", "D12");
        seen.category = listRows(user, kNumberColumn);
        grid.narrow("");
        user.pick("PC", 2, 0);
        user.type("txtSearch", "螺");
        user.click("cmdFind");
        seen.found = listRows(user, kNumberColumn);
    });
    return seen;
}

TEST_P(Roads, aListReadByWindowsShowsWhatOneReadWholeShows) {
    const TemporaryFolder folder;
    addGoods(stage.database(), 60);
    const Seen whole = lookAtAll(stage, folder.file("whole.xlsx"));
    EXPECT_EQ(whole.shown.size(), 64U);
    stage.set("ListColumns", "7.3", "");
    RowWindows& windows = stage.readByWindows();
    const Seen seen = lookAtAll(stage, folder.file("windows.xlsx"));
    EXPECT_GT(windows.fetches, 20);
    EXPECT_EQ(seen.shown, whole.shown);
    EXPECT_EQ(seen.sorted, whole.sorted);
    EXPECT_EQ(seen.exported, whole.exported);
    EXPECT_EQ(seen.copied, whole.copied);
    EXPECT_EQ(seen.status, whole.status);
    EXPECT_EQ(seen.narrowed, whole.narrowed);
    EXPECT_EQ(seen.category, whole.category);
    EXPECT_EQ(seen.found, whole.found);
}

TEST_P(Roads, aLongListIsThatOfItsOpeningWhateverOthersSave) {
    const auto rows = static_cast<std::size_t>(addLongList(stage.database())) + 4;
    stage.open(kManagement, [&](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        const Texts before = codes(user);
        ASSERT_EQ(before.size(), rows);
        stage.database().execute("delete from ICItem where fItemId>30000");
        stage.database().execute("update ICItem set fNumber='06.'+fNumber,fName='改名',fMinQty=0 where fItemId>=1000");
        EXPECT_EQ(codes(user), before);
        user.clickHeading("vsf1", kNumberColumn);
        EXPECT_EQ(grid.text(4999, kNumberColumn), "33,766");
        user.clickHeading("vsf1", kNumberColumn);
        EXPECT_EQ(grid.text(1, 2), "05.33767");
        grid.narrow("33,76");
        EXPECT_EQ(grid.rowCount(), 9);
        EXPECT_EQ(grid.text(8, 3), "垫圈");
        grid.narrow("");
        user.clickNode("tv1", "D0");
        EXPECT_EQ(codes(user).size(), 1237U);
    });
}

TEST_P(Roads, aRowThatCanNotBeReadWhileScrollingGivesOneBoxAndTheListLivesOn) {
    addGoods(stage.database(), 200);
    RowWindows& windows = stage.readByWindows();
    windows.rows = 50;
    stage.open(kManagement, [&](User& user) {
        windows.failAll = true;
        user.answer(MessageKind::critical, kFault);
        user.selectRow("vsf1", 180);
        windows.failAll = false;
        user.selectRow("vsf1", 1);
        user.selectRow("vsf1", 180);
        EXPECT_EQ(codes(user).size(), 204U);
        user.clickNode("tv1", "D14");
        EXPECT_EQ(codes(user), (Texts{"02.001"}));
    });
    EXPECT_EQ(stage.script().messages().size(), 1U);
}

TEST_P(Roads, anExportOfARowThatCanNotBeReadTellsSoAndLeavesNoFile) {
    const TemporaryFolder folder;
    addGoods(stage.database(), 200);
    RowWindows& windows = stage.readByWindows();
    stage.open(kManagement, [&](User& user) {
        windows.failAt = windows.fetches + 50;
        user.chooseFile(folder.file("list.xlsx"));
        user.answer(MessageKind::critical, kFault);
        user.clickTool("Excel");
        EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
        EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::path(folder.file("list.xlsx")).parent_path()));
        user.chooseFile(folder.file("list.xlsx"));
        user.answer(MessageKind::information, "导出成功!");
        user.clickTool("Excel");
    });
    EXPECT_EQ(readSpreadsheet(folder.file("list.xlsx")).size(), 205U);
}

TEST_P(Roads, aPrintOfARowThatCanNotBeReadTellsSo) {
    addGoods(stage.database(), 200);
    std::filesystem::copy_file(sourceFile("examples/host/Report3.grf"), stage.database().folder().file("Report3.grf"));
    RowWindows& windows = stage.readByWindows();
    stage.open(kManagement, [&](User& user) {
        windows.failAt = windows.fetches + 50;
        user.answer(MessageKind::critical, kFault);
        user.clickTool("Print");
        EXPECT_EQ(codes(user).size(), 204U);
    });
}

TEST_P(Roads, aSortingThatIsKeptIsNotLostWhenItsRowsCanNotBeRead) {
    addGoods(stage.database(), 60);
    stage.open(kPicker, [](User& user) { user.clickHeading("vsf1", 3); });
    RowWindows& windows = stage.readByWindows();
    windows.failAt = 5;
    stage.openInVain(kPicker, kFault);
    stage.open(kPicker, [](User& user) {
        EXPECT_EQ(user.control<ListGrid>("vsf1").sortedColumn(), 3);
        EXPECT_EQ(codes(user).size(), 64U);
    });
}

TEST_P(Roads, aListIsTendedWhileItShows) {
    RowWindows& windows = stage.readByWindows();
    stage.open(kPicker, [&](User& user) {
        EXPECT_EQ(windows.tended, 0);
        user.rest();
        EXPECT_EQ(windows.tended, 1);
        user.rest();
        EXPECT_EQ(windows.tended, 2);
    });
    EXPECT_EQ(windows.tended, 2);
}

TEST_P(Roads, aListThatCanNotBeTendedTellsSoOnce) {
    stage.readByWindows();
    stage.open(kPicker, [&](User& user) {
        stage.faults() = {.failAt = 1};
        user.answer(MessageKind::critical, kFault);
        user.rest();
        stage.faults() = {.failAt = 1};
        user.rest();
        EXPECT_EQ(stage.faults().count, 1);
        stage.faults() = {};
        user.clickNode("tv1", "D14");
        stage.faults() = {.failAt = 1};
        user.answer(MessageKind::critical, kFault);
        user.rest();
        EXPECT_EQ(codes(user), (Texts{"02.001"}));
        stage.faults() = {};
    });
    EXPECT_EQ(stage.script().messages().size(), 2U);
}

}  // namespace
}  // namespace orvenmod::test
