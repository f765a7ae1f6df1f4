// The entries that a field chooses from are read when its list is opened, and not before.
#include "editor/cellroads.h"
#include "support/windowedrows.h"

namespace orvenmod::test {
namespace {

TEST_P(EditorCellRoads, theEntriesOfAFieldThatIsLeftAloneAreNeverRead) {
    database().execute("update ICItem set fH=202 where fItemId=101");
    RowWindows& windows = stage.readByWindows();
    stage.openItem(101, [&](User& user) {
        EXPECT_EQ(value(user, kSupplierRow) + chosenId(user, kSupplierRow), "华南供应202");
        user.clickCell("fps1", kValue, kModelRow);
        user.typeKeys("新");
        for (int row = kModelRow; row < kCategoryRow; ++row)
            user.press("Enter");
        user.answer(MessageKind::information, "数据修改成功!");
        user.press("Ctrl+S");
        EXPECT_EQ(windows.fetches, 0);
        user.clickCell("fps1", kValue, kSupplierRow);
        user.press("F4");
        EXPECT_EQ(user.openedList().size(), 2U);
        EXPECT_GT(windows.fetches, 0);
    });
    EXPECT_EQ(stored("fH", 101), "202");
    EXPECT_EQ(stored("fModel", 101), "新");
}

TEST_P(EditorCellRoads, entriesThatCanNotBeReadGiveABoxAndTheFieldKeepsItsChoice) {
    database().execute("update ICItem set fH=202 where fItemId=101");
    RowWindows& windows = stage.readByWindows();
    stage.openItem(101, [&](User& user) {
        user.chooseMenu("MenuNewAfterSave");
        user.clickCell("fps1", kValue, kModelRow);
        for (int row = kModelRow; row < kSupplierRow; ++row)
            user.press("Enter");
        windows.failAll = true;
        for (const char* key : {"F4", "F2", "Delete"}) {
            user.answer(MessageKind::critical, "注入的故障");
            user.press(key);
            EXPECT_EQ(value(user, kSupplierRow) + chosenId(user, kSupplierRow), "华南供应202") << key;
        }
        user.answer(MessageKind::information, "数据修改成功!");
        user.press("Ctrl+S");
        windows.failAll = false;
        user.press("F4");
        EXPECT_EQ(user.openedList().size(), 2U);
        user.press("Esc");
    });
    EXPECT_EQ(stored("fH", 101), "202");
}

TEST_P(EditorCellRoads, theListsOfTheFieldsAreTendedWhileTheEditorShows) {
    RowWindows& windows = stage.readByWindows();
    stage.openNew([&](User& user) {
        const int before = windows.tended;
        user.rest();
        EXPECT_EQ(windows.tended, before + 1);
    });
}

}  // namespace
}  // namespace orvenmod::test
