#include "browser/roads.h"

#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Combo;
using platform::EntryGrid;
using platform::Frame;
using platform::ListGrid;
using platform::Tree;

TEST_P(Roads, aClerkBrowsesByTreeAndSearch) {
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(user.window().caption(), "货品");
        EXPECT_EQ(user.control<Tree>("tv1").text("D13"), "螺丝(01.01)");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002", "02.001", "03"}));
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 1);
        user.clickNode("tv1", "D12");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        user.clickNode("tv1", "D0");
        user.pick("PC", 2, 0);
        user.type("txtSearch", "开关");
        user.click("cmdFind");
        EXPECT_EQ(codes(user), Texts{"02.001"});
        user.click("cmdClear");
        EXPECT_EQ(user.control<platform::Edit>("txtSearch").text(), "");
        user.click("cmdFind");
        EXPECT_EQ(codes(user).size(), 4U);
        user.chooseMenu("MenuFileExit");
    });
    EXPECT_TRUE(stage.script().messages().empty());
}

TEST_P(Roads, aDateIsSearchedByThePicker) {
    stage.database().execute("update ICItem set fF='2026-02-03' where fItemId=103");
    stage.open(kManagement, [](User& user) {
        user.pick("PC", 4, 0);
        EXPECT_TRUE(user.control<platform::DatePicker>("dtp").visible());
        EXPECT_FALSE(user.control<platform::Edit>("txtSearch").visible());
        user.pickDate("dtp", {2026, 2, 3});
        user.click("cmdFind");
        EXPECT_EQ(codes(user), Texts{"02.001"});
    });
}

TEST_P(Roads, aHostPicksOneItemByDoubleClick) {
    stage.open(kPicker, [](User& user) {
        EXPECT_EQ(listRows(user, 5)[0], (Texts{"01.01.001", "内六角螺丝", "", "1,244.5"}));
        user.doubleClickRow("vsf1", 3);
    });
    EXPECT_EQ(stage.fItemId + "|" + stage.fNumber + "|" + stage.fName, "103|02.001|墙壁开关");
}

TEST_P(Roads, aHostPicksOneItemByEnter) {
    stage.open(kPicker, [](User& user) {
        user.selectRow("vsf1", 2);
        user.keyOnGrid("vsf1", platform::kKeyEnter);
    });
    EXPECT_EQ(stage.fItemId, "102");
}

TEST_P(Roads, closingThePickerPicksNothing) {
    stage.open(kPicker, [](User& user) {
        user.selectRow("vsf1", 2);
        user.closeWindow();
    });
    EXPECT_EQ(stage.fItemId, "");
}

TEST_P(Roads, aBillGathersItemsWithQuantities) {
    stage.open(kBillPicker, [](User& user) {
        EXPECT_TRUE(user.control<Frame>("Frame3").visible());
        user.doubleClickRow("vsf1", 3);
        user.typeCell("fps1", 6, 1, "2.5");
        user.doubleClickRow("vsf1", 4);
        user.answer(MessageKind::question, "该货品已经加入选定的货品中,是否继续加入?", Answer::no);
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(user.control<EntryGrid>("fps1").rowCount(), 2);
        user.clickCell("fps1", 6, 2);
        user.answer(MessageKind::question, "确定要移除当前行吗?", Answer::yes);
        user.click("cmdRemoveItem");
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.fItemId, "-1");
    EXPECT_EQ(stage.database().rows("select fItemId,fQty,fUserId,fEntryId from tblItemInput"),
              (Rows{{"103", "2.5", "7", "1"}}));
}

TEST_P(Roads, aPlainUserIsRefused) {
    stage.set("SystemLogin", "IsAdmin", "0");
    stage.database().hideColumn(7, 3, "fModel");
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(user.control<ListGrid>("vsf1").columnCount(), 5);
        const std::string refusal = "您无此权限，请与系统管理员联系！";
        user.answer(MessageKind::warning, refusal);
        user.click("cmdAddDetail");
        user.answer(MessageKind::warning, refusal);
        user.doubleClickRow("vsf1", 1);
        user.answer(MessageKind::warning, refusal);
        user.rightClick("tv1", "MenuParentEditDelete");
    });
    for (const ShownMessage& box : stage.script().messages())
        EXPECT_EQ(box.title, "测试套件");
}

TEST_P(Roads, commandsAreReachedByMenuPopupAndShortcut) {
    stage.open(kManagement, [this](User& user) {
        const Steps leave = [](User& editor) { editor.clickTool("Exit"); };
        user.selectRow("vsf1", 2);
        stage.script().onWindow("frmBasicInfo", leave);
        user.press("Ctrl+U");
        EXPECT_EQ(appState().gCurItemId, 102);
        user.selectRow("vsf1", 3);
        stage.script().onWindow("frmBasicInfo", leave);
        user.rightClick("vsf1", "MenuEditUpdate");
        EXPECT_EQ(appState().gCurItemId, 103);
        user.clickNode("tv1", "D13");
        stage.script().onWindow("frmParent", [](User& dialog) {
            EXPECT_EQ(appState().gCurItemId, 13);
            dialog.click("cmdClose");
        });
        user.chooseMenu("MenuParentEditUpdate");
        user.press("Ctrl+X");
        EXPECT_FALSE(user.window().shown());
    });
}

TEST_P(Roads, aFailureInAnEventIsShownAndTheWindowLivesOn) {
    stage.open(kManagement, [](User& user) {
        user.pick("PC", 3, 0);
        user.type("txtSearch", "abc");
        user.answer(MessageKind::critical, "列名 'abc' 无效。");
        user.click("cmdFind");
        user.clickNode("tv1", "D14");
        EXPECT_EQ(codes(user), Texts{"02.001"});
    });
    EXPECT_EQ(stage.script().messages()[0].title, "测试套件");
}

TEST_P(Roads, aFailureWhileTheWindowLoadsGoesToTheEntry) {
    stage.database().execute("drop view vICItem");
    stage.openInVain(kManagement, "对象名 'vICItem' 无效。");
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_P(Roads, theFieldIsKeptForTheNextUse) {
    stage.open(kManagement, [](User& user) { user.pick("PC", 2, 0); });
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(user.control<Combo>("PC", 0).selected(), 2);
        EXPECT_EQ(user.control<Combo>("PC", 1).selected(), 1);
    });
}

TEST_P(Roads, sizesFollowTheWindow) {
    stage.open(kBillPicker, [](User& user) {
        for (const auto& [width, height] : {std::pair{19800.F, 8700.F}, {24000.F, 12000.F}}) {
            user.resizeWindow(width, height);
            const auto& frame2 = user.control<Frame>("Frame2");
            const auto& frame3 = user.control<Frame>("Frame3");
            constexpr float kPixel = 15;
            EXPECT_NEAR(frame2.width(), width * 15120 / 19800, kPixel);
            EXPECT_NEAR(user.control<Tree>("tv1").height(), frame2.height() - 800, kPixel);
            EXPECT_NEAR(user.control<ListGrid>("vsf1").height(), frame2.height() - frame3.height() - 800, kPixel);
            EXPECT_NEAR(frame3.top(), frame2.height() - frame3.height(), kPixel);
        }
    });
}

TEST_P(Roads, everyEntryStartsAfresh) {
    for (int time = 0; time < 3; ++time) {
        stage.open(kPicker, [](User& user) {
            EXPECT_EQ(user.control<Tree>("tv1").selected(), "");
            user.clickNode("tv1", "D14");
            user.doubleClickRow("vsf1", 1);
        });
        EXPECT_EQ(stage.fItemId, "103");
        EXPECT_EQ(stage.connectionsAlive(), 0);
    }
}

}  // namespace
}  // namespace orvenmod::test
