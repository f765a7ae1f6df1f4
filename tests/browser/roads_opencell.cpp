// A quantity that is being typed, and what the clerk does next without Enter.
#include <utility>
#include <vector>

#include "browser/roads.h"

namespace orvenmod::test {
namespace {

using platform::EntryGrid;
using platform::ListGrid;

/// Adds the third item to the bill and types a quantity that isn't left yet.
void beginQuantity(User& user, const std::string& typed) {
    user.doubleClickRow("vsf1", 3);
    user.typeKeys(typed);
}

TEST_P(Roads, nothingPassesAQuantityThatIsRefused) {
    stage.set("SystemSetup", "intZeroNumber", "0");
    const std::vector<std::pair<const char*, Steps>> ways = {
        {"a click on a node", [](User& user) { user.clickNode("tv1", "D12"); }},
        {"a right click on a node", [](User& user) { user.rightClickNode("tv1", "D14", ""); }},
        {"a click on a row", [](User& user) { user.selectRow("vsf1", 1); }},
        {"a right click on a row", [](User& user) { user.rightClickRow("vsf1", 1, ""); }},
        {"a double click on a row", [](User& user) { user.doubleClickRow("vsf1", 2); }},
        {"a click on a heading", [](User& user) { user.clickHeading("vsf1", 3); }},
        {"a right click on a heading", [](User& user) { user.rightClickHeading("vsf1", 3, ""); }},
        {"a drag of a heading", [](User& user) { user.dragHeading("vsf1", 3, 2); }},
        {"a search", [](User& user) { user.click("cmdFind"); }},
        {"removing the row", [](User& user) { user.click("cmdRemoveItem"); }},
        {"a menu", [](User& user) { user.chooseMenu("MenuEditUpdate"); }},
        {"an export", [](User& user) { user.clickTool("Excel"); }},
        {"closing", [](User& user) { user.closeWindow(); }}};
    stage.open(kBillPicker, [&](User& user) {
        const auto& bill = user.control<EntryGrid>("fps1");
        const auto expectOpen = [&](const char* way) {
            EXPECT_TRUE(user.window().shown()) << way;
            EXPECT_TRUE(bill.cellOpen()) << way;
            EXPECT_EQ(bill.openText(), "2.5") << way;
            EXPECT_TRUE(bill.hasFocus()) << way;
            EXPECT_EQ(bill.rowCount(), 1) << way;
            EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 3) << way;
        };
        beginQuantity(user, "2.5");
        stage.forgetStatements();
        for (const auto& [way, step] : ways) {
            step(user);
            expectOpen(way);
        }
        for (const char* key : {"Enter", "Tab", "Shift+Tab", "Up", "Down", "PageDown", "Alt+A", "Alt+R", "Alt+F",
                                "Ctrl+A", "Ctrl+F", "Ctrl+U", "Ctrl+X"}) {
            user.press(key);
            expectOpen(key);
        }
        EXPECT_EQ(stage.statements(), Texts{});
        user.typeKeys("x");
        EXPECT_EQ(bill.refusal(), "") << "what is typed next is another text";
        user.press("Esc");
        EXPECT_FALSE(bill.cellOpen());
    });
    EXPECT_TRUE(stage.script().messages().empty());
    EXPECT_EQ(stage.fItemId, "");
}

TEST_P(Roads, aCommandTakesTheQuantityThatIsBeingTyped) {
    for (const char* key : {"Alt+A", "Enter Alt+A", "Tab Alt+A"}) {
        const std::string keys = key;
        stage.open(kBillPicker, [&](User& user) {
            beginQuantity(user, "12");
            if (keys.find(' ') != std::string::npos) user.press(keys.substr(0, keys.find(' ')));
            user.press("Alt+A");
            EXPECT_FALSE(user.window().shown()) << key;
        });
        EXPECT_EQ(stage.fItemId, "-1") << key;
        EXPECT_EQ(stage.database().rows("select fItemId,fQty from tblItemInput"), (Rows{{"103", "12"}})) << key;
    }
}

TEST_P(Roads, anItemIsRemovedWhileItsQuantityIsBeingTyped) {
    stage.open(kBillPicker, [](User& user) {
        const auto& bill = user.control<EntryGrid>("fps1");
        user.doubleClickRow("vsf1", 4);
        beginQuantity(user, "5");
        user.answer(MessageKind::question, "确定要移除当前行吗?", Answer::yes);
        user.press("Alt+R");
        EXPECT_FALSE(bill.cellOpen());
        EXPECT_EQ(bill.rowCount(), 1);
        user.clickCell("fps1", 6, 1);
        user.typeKeys("7");
        user.answer(MessageKind::question, "确定要移除当前行吗?", Answer::no);
        user.press("Alt+R");
        EXPECT_EQ(bill.text(6, 1), "7");
        user.press("Alt+A");
    });
    EXPECT_EQ(stage.database().rows("select fItemId,fQty from tblItemInput"), (Rows{{"104", "7"}}));
}

TEST_P(Roads, theFirstRowIsMeantAfterAnItemWasSaved) {
    stage.open(kManagement, [this](User& user) {
        user.selectRow("vsf1", 3);
        stage.script().onWindow("frmBasicInfo", [](User& editor) {
            editor.typeCell("fps1", 2, 1, "001");
            editor.typeCell("fps1", 2, 3, "墙壁插座");
            editor.answer(MessageKind::information, "数据修改成功!");
            editor.press("Ctrl+S");
            editor.closeWindow();
        });
        user.press("Ctrl+U");
        const auto& list = user.control<ListGrid>("vsf1");
        EXPECT_EQ(list.text(3, 3), "墙壁插座");
        EXPECT_EQ(list.currentRow(), 1);
        EXPECT_TRUE(list.isSelected(1));
        EXPECT_FALSE(list.isSelected(3));
    });
}

TEST_P(Roads, theKeysThatWriteNothingSearchForNothing) {
    stage.open(kPicker, [](User& user) {
        user.type("txtSearch", "开关");
        user.control<ListGrid>("vsf1").setFocus();
        for (const char* key : {"Esc", "Delete", "Backspace", "Insert", "F2", "Space"}) {
            user.press(key);
            EXPECT_TRUE(user.control<ListGrid>("vsf1").hasFocus()) << key;
            EXPECT_EQ(user.control<platform::Edit>("txtSearch").text(), "开关") << key;
        }
    });
}

}  // namespace
}  // namespace orvenmod::test
