// The window around the list: captions, modes, commands and sizes.
#include <gtest/gtest.h>

#include <stdexcept>

#include "browser/browsertest.h"
#include "browser/frmBasicInfoList.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Frame;
using platform::ListGrid;
using platform::Menu;
using platform::Tree;

class BrowserWindow : public BrowserTest {
protected:
    void beUserWith(const std::vector<std::string>& rights) {
        stage.set("SystemLogin", "IsAdmin", "0");
        for (const std::string& right : rights)
            database().grant(7, right);
    }
    /// Runs the step and expects the right to have been asked for and refused.
    void expectRefused(User& user, const std::string& right, const std::function<void()>& step) {
        stage.forgetStatements();
        user.answer(MessageKind::warning, kRefusal);
        step();
        EXPECT_EQ(stage.statements(),
                  Texts{"select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='" + right + "'"});
        EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::warning, kRefusal, "测试套件"}));
    }
};

TEST_F(BrowserWindow, captionsBearTheNameOfTheClass) {
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(user.window().caption(), "货品");
        EXPECT_EQ(user.control<Button>("cmdAddDetail").caption(), "增加货品");
        EXPECT_EQ(user.control<Button>("cmdUpdateDetail").caption(), "修改货品");
        EXPECT_EQ(user.control<Menu>("MenuEdit").caption(), "货品编辑(&E)");
        EXPECT_EQ(user.control<Menu>("MenuEditNew").caption(), "新增货品");
        EXPECT_EQ(user.control<Menu>("MenuEditUpdate").caption(), "修改货品");
        EXPECT_EQ(user.control<Menu>("MenuEditDelete").caption(), "删除货品");
        EXPECT_EQ(user.control<Menu>("MenuLockDetail").caption(), "禁用货品");
        EXPECT_EQ(user.control<Menu>("MenuUnLockDetail").caption(), "反禁用货品");
    });
}

TEST_F(BrowserWindow, theOtherCaptionsAreThoseOfTheDesign) {
    stage.open(kBillPicker, [](User& user) {
        EXPECT_EQ(user.control<Button>("cmdAddType").caption(), "增加分类");
        EXPECT_EQ(user.control<Button>("cmdUpdateParent").caption(), "修改分类");
        EXPECT_EQ(user.control<platform::Label>("Label1").caption(), "查询条件：");
        EXPECT_EQ(user.control<Button>("cmdFind").caption(), "搜索(&F)");
        EXPECT_EQ(user.control<Button>("cmdClear").caption(), "清空条件(&C)");
        EXPECT_EQ(user.control<Frame>("Frame3").caption(), "单据选定的物料");
        EXPECT_EQ(user.control<Button>("cmdAddItem").caption(), "添加到单据(&A)");
        EXPECT_EQ(user.control<Button>("cmdRemoveItem").caption(), "移除(&R)");
        EXPECT_EQ(user.control<Menu>("MenuFile").caption(), "文件(&F)");
        EXPECT_EQ(user.control<Menu>("MenuFileExit").caption(), "退出");
        EXPECT_EQ(user.control<Menu>("MenuParentEdit").caption(), "分类编辑(&P)");
        EXPECT_EQ(user.control<Menu>("MenuParentEditNew").caption(), "新增分类");
        EXPECT_EQ(user.control<Menu>("MenuParentEditUpdate").caption(), "修改分类");
        EXPECT_EQ(user.control<Menu>("MenuParentEditDelete").caption(), "删除分类");
    });
}

TEST_F(BrowserWindow, lockAndUnlockStandInTheMenuSwitchedOff) {
    stage.open(kManagement, [](User& user) {
        for (const char* name : {"MenuLockDetail", "MenuUnLockDetail"}) {
            EXPECT_TRUE(user.control<Menu>(name).visible()) << name;
            EXPECT_FALSE(user.control<Menu>(name).enabled()) << name;
        }
    });
}

TEST_F(BrowserWindow, theToolbarHasTheFourButtonsThatAct) {
    stage.open(kManagement, [](User& user) {
        const auto& toolbar = user.control<platform::Toolbar>("Toolbar1");
        for (const char* key : {"Excel", "Preview", "Print", "Exit"}) {
            EXPECT_TRUE(toolbar.hasButton(key) && toolbar.buttonVisible(key) && toolbar.buttonEnabled(key)) << key;
        }
        for (const char* key : {"New", "Seek", "Find", "Save", "Check", "Previ", "Next", "Back", "First", "End", "Red",
                                "Blue", "InsertRow", "DeleteRow"}) {
            EXPECT_FALSE(toolbar.hasButton(key)) << key;
        }
    });
}

TEST_F(BrowserWindow, theFirstRowIsCurrentAfterTheLoad) {
    stage.open(kManagement, [](User& user) { EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 1); });
}

TEST_F(BrowserWindow, anEmptyListHasNoCurrentRow) {
    stage.open({.paramSql = " and 1=2"}, [](User& user) { EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 0); });
}

TEST_F(BrowserWindow, theIniPathIsTheSuitesFolder) {
    stage.open(kManagement,
               [&](User&) { EXPECT_EQ(appState().gIniPath, database().folder().path() + "\\setupInfo.ini"); });
}

TEST_F(BrowserWindow, aPickHandsItemCodeAndNameToTheHost) {
    stage.open(kPicker, [](User& user) {
        user.doubleClickRow("vsf1", 3);
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "103");
    EXPECT_EQ(stage.fNumber, "02.001");
    EXPECT_EQ(stage.fName, "墙壁开关");
}

TEST_F(BrowserWindow, enterOnARowPicksIt) {
    stage.open(kPicker, [](User& user) {
        user.selectRow("vsf1", 2);
        user.keyOnGrid("vsf1", platform::kKeyEnter);
    });
    EXPECT_EQ(stage.fItemId, "102");
}

TEST_F(BrowserWindow, anotherKeyOnARowDoesNothing) {
    stage.open(kPicker, [](User& user) {
        user.selectRow("vsf1", 2);
        user.keyOnGrid("vsf1", 32);
        EXPECT_TRUE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "");
}

TEST_F(BrowserWindow, ofSeveralSelectedRowsTheLastIsPicked) {
    stage.open(kPicker, [](User& user) {
        user.selectRow("vsf1", 3);
        user.alsoSelectRow("vsf1", 1);
        user.keyOnGrid("vsf1", platform::kKeyEnter);
    });
    EXPECT_EQ(stage.fItemId, "103");
}

TEST_F(BrowserWindow, withoutASelectedRowThePickerClosesEmpty) {
    stage.open(kPicker, [](User& user) {
        user.control<ListGrid>("vsf1").setSelected(1, false);
        user.keyOnGrid("vsf1", platform::kKeyEnter);
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId + stage.fNumber + stage.fName, "");
}

TEST_F(BrowserWindow, aDoubleClickOnTheHeadingOfAnEmptyListDoesNothing) {
    for (const Call& call : {kManagement, kPicker, kBillPicker}) {
        Call empty = call;
        empty.paramSql = " and 1=2";
        stage.open(empty, [](User& user) {
            user.doubleClickRow("vsf1", 0);
            EXPECT_TRUE(user.window().shown());
        });
        EXPECT_EQ(stage.fItemId, "");
    }
}

TEST_F(BrowserWindow, closingThePickerByMenuToolbarOrTitleBarLeavesTheResultsEmpty) {
    const std::vector<Steps> ways = {[](User& user) { user.chooseMenu("MenuFileExit"); },
                                     [](User& user) { user.clickTool("Exit"); },
                                     [](User& user) { user.press("Ctrl+X"); }, [](User& user) { user.closeWindow(); }};
    for (const Steps& way : ways) {
        stage.open(kPicker, [&](User& user) {
            user.selectRow("vsf1", 2);
            way(user);
            EXPECT_FALSE(user.window().shown());
        });
        EXPECT_EQ(stage.fItemId + stage.fNumber + stage.fName, "");
    }
}

TEST_F(BrowserWindow, theBillAreaShowsForGoodsThatAreCalledFromABill) {
    const auto billAreaShows = [&](const Call& call) {
        bool shows = false;
        stage.open(call, [&](User& user) { shows = user.control<Frame>("Frame3").visible(); });
        return shows;
    };
    EXPECT_TRUE(billAreaShows(kBillPicker));
    EXPECT_TRUE(billAreaShows({.isReturn = 0, .itemCalled = 1})) << "management, called from a bill";
    EXPECT_FALSE(billAreaShows(kManagement));
    EXPECT_FALSE(billAreaShows(kPicker));
    EXPECT_FALSE(billAreaShows({.itemClass = 1, .isReturn = 1, .itemCalled = 1}));
    EXPECT_FALSE(billAreaShows({.isReturn = 1, .itemCalled = 2}));
}

TEST_F(BrowserWindow, noCommandIsDisabledInAPicker) {
    stage.open(kPicker, [](User& user) {
        for (const char* name : {"cmdAddType", "cmdUpdateParent", "cmdAddDetail", "cmdUpdateDetail", "cmdFind"}) {
            EXPECT_TRUE(user.control<Button>(name).enabled()) << name;
        }
        for (const char* name : {"MenuEditNew", "MenuEditUpdate", "MenuEditDelete", "MenuParentEditNew"}) {
            EXPECT_TRUE(user.control<Menu>(name).enabled()) << name;
        }
    });
}

TEST_F(BrowserWindow, aDoubleClickInManagementOpensNoPick) {
    stage.open(kManagement, [this](User& user) {
        expectEditor(1, 102);
        user.doubleClickRow("vsf1", 2);
        EXPECT_TRUE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "");
}

TEST_F(BrowserWindow, inManagementCalledFromABillADoubleClickEdits) {
    stage.open({.isReturn = 0, .itemCalled = 1}, [this](User& user) {
        expectEditor(1, 103);
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(user.control<platform::EntryGrid>("fps1").rowCount(), 0);
    });
}

TEST_F(BrowserWindow, aNewItemIsToldToTheEditor) {
    beUserWith({"Y304"});
    stage.open(kManagement, [this](User& user) {
        const std::vector<std::function<void()>> ways = {
            [&] { user.click("cmdAddDetail"); }, [&] { user.chooseMenu("MenuEditNew"); }, [&] { user.press("Ctrl+A"); },
            [&] { user.rightClick("vsf1", "MenuEditNew"); }};
        for (const auto& way : ways) {
            appState().gEditMode = 1;
            expectEditor(0);
            way();
        }
    });
}

TEST_F(BrowserWindow, theItemToChangeIsToldToTheEditor) {
    beUserWith({"Y305"});
    stage.open(kManagement, [this](User& user) {
        const std::vector<std::function<void()>> ways = {
            [&] { user.click("cmdUpdateDetail"); }, [&] { user.chooseMenu("MenuEditUpdate"); },
            [&] { user.press("Ctrl+U"); }, [&] { user.rightClick("vsf1", "MenuEditUpdate"); },
            [&] { user.keyOnGrid("vsf1", platform::kKeyEnter); }};
        for (const auto& way : ways) {
            appState().gEditMode = 0;
            appState().gCurItemId = 0;
            user.selectRow("vsf1", 2);
            expectEditor(1, 102);
            way();
        }
    });
}

TEST_F(BrowserWindow, ofSeveralSelectedRowsTheLastIsChanged) {
    stage.open(kManagement, [this](User& user) {
        user.selectRow("vsf1", 4);
        user.alsoSelectRow("vsf1", 2);
        expectEditor(1, 104);
        user.click("cmdUpdateDetail");
    });
}

TEST_F(BrowserWindow, aSavedItemShowsInTheListBehind) {
    database().execute("delete from tblMaxNum");
    database().execute("insert into tblMaxNum(fTableName,fMaxNum) values('tblItem',500)");
    stage.open(kManagement, [this](User& user) {
        user.clickNode("tv1", "D14");
        script().onWindow("frmBasicInfo", [](User& editor) {
            editor.typeCell("fps1", 2, 1, "007");
            editor.typeCell("fps1", 2, 3, "灯泡");
            editor.answer(MessageKind::information, "数据保存成功!");
            editor.clickTool("Save");
        });
        user.press("Ctrl+A");
        EXPECT_EQ(
            stage.lastStatement(),
            "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  and fNBNumber like '.14.%' order by "
            "fnumber ");
        EXPECT_EQ(listRows(user), (Rows{{"02.001", "墙壁开关"}, {"02.007", "灯泡"}}));
    });
}

TEST_F(BrowserWindow, withoutASelectedRowNothingIsChanged) {
    stage.open(kManagement, [](User& user) {
        appState().gEditMode = 0;
        user.control<ListGrid>("vsf1").setSelected(1, false);
        user.click("cmdUpdateDetail");
        EXPECT_EQ(appState().gEditMode, 0);
    });
}

TEST_F(BrowserWindow, inAnEmptyListNothingIsChanged) {
    stage.open({.paramSql = " and 1=2"}, [](User& user) {
        appState().gEditMode = 0;
        user.click("cmdUpdateDetail");
        EXPECT_EQ(appState().gEditMode, 0);
        EXPECT_EQ(appState().gCurItemId, 0);
    });
}

TEST_F(BrowserWindow, aRefusedCommandChangesNothing) {
    beUserWith({"Y104", "Z04", "Y3"});
    stage.open(kManagement, [&](User& user) {
        appState().gEditMode = 9;
        user.clickNode("tv1", "D12");
        expectRefused(user, "Y304", [&] { user.click("cmdAddDetail"); });
        expectRefused(user, "Y305", [&] { user.click("cmdUpdateDetail"); });
        expectRefused(user, "Y305", [&] { user.doubleClickRow("vsf1", 1); });
        expectRefused(user, "Y306", [&] { user.chooseMenu("MenuEditDelete"); });
        expectRefused(user, "Y301", [&] { user.click("cmdAddType"); });
        expectRefused(user, "Y301", [&] { user.chooseMenu("MenuParentEditNew"); });
        expectRefused(user, "Y302", [&] { user.click("cmdUpdateParent"); });
        expectRefused(user, "Y302", [&] { user.chooseMenu("MenuParentEditUpdate"); });
        expectRefused(user, "Y303", [&] { user.rightClick("tv1", "MenuParentEditDelete"); });
        EXPECT_EQ(appState().gEditMode, 9);
        EXPECT_EQ(appState().gCurItemId, 0);
        EXPECT_FALSE(appState().gConn);
    });
}

TEST_F(BrowserWindow, aNewCategoryIsToldToTheDialog) {
    stage.open(kManagement, [this](User& user) {
        user.clickNode("tv1", "D13");
        appState().gEditMode = 1;
        script().onWindow("frmParent", [](User&) {
            EXPECT_EQ(appState().gEditMode, 0);
            EXPECT_EQ(appState().gCurParentId, 13);
        });
        user.click("cmdAddType");
    });
}

TEST_F(BrowserWindow, theCategoryToChangeIsToldToTheDialog) {
    stage.open(kManagement, [this](User& user) {
        user.clickNode("tv1", "D13");
        appState().gEditMode = 0;
        script().onWindow("frmParent", [](User&) {
            EXPECT_EQ(appState().gEditMode, 1);
            EXPECT_EQ(appState().gCurItemId, 13);
        });
        user.click("cmdUpdateParent");
    });
}

TEST_F(BrowserWindow, theRootCannotBeChangedAndNothingTellsSo) {
    stage.open(kManagement, [](User& user) {
        user.clickNode("tv1", "D0");
        appState().gEditMode = 0;
        user.click("cmdUpdateParent");
        EXPECT_EQ(appState().gEditMode, 0);
        EXPECT_EQ(appState().gCurItemId, 0);
    });
}

TEST_F(BrowserWindow, withoutASelectedNodeNoCategoryIsChanged) {
    stage.open(kManagement, [](User& user) {
        user.control<Tree>("tv1").select("");
        appState().gCurItemId = 5;
        user.click("cmdUpdateParent");
        EXPECT_EQ(appState().gCurItemId, 5);
    });
}

TEST_F(BrowserWindow, theMenusOfTheBarPopUpOnTreeAndList) {
    stage.open(kManagement, [this](User& user) {
        user.clickNode("tv1", "D12");
        script().onWindow("frmParent", [](User&) { EXPECT_EQ(appState().gCurItemId, 12); });
        user.rightClick("tv1", "MenuParentEditUpdate");
        user.rightClick("vsf1", "");
    });
}

TEST_F(BrowserWindow, theOneShotSettingsAreSetBackHoweverTheWindowWasUsed) {
    stage.set("ShowStock", "StockId", "2");
    stage.set("ShowStock", "PerFKC", "-1");
    stage.open(kManagement, [&](User&) {
        EXPECT_EQ(stage.get("ShowStock", "StockId"), "2");
        EXPECT_EQ(stage.get("ShowStock", "PerFKC"), "-1");
    });
    EXPECT_EQ(stage.get("ShowStock", "StockId"), "0");
    EXPECT_EQ(stage.get("ShowStock", "PerFKC"), "0");
}

TEST_F(BrowserWindow, theWindowIsLoadedAnewByEveryEntry) {
    stage.open(kPicker, [](User& user) {
        user.clickNode("tv1", "D14");
        user.pick("PC", 2, 0);
    });
    database().addItem(3, 105, "04", "安全帽");
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(codes(user).size(), 5U);
        EXPECT_EQ(user.control<Tree>("tv1").selected(), "");
        EXPECT_EQ(user.control<ListGrid>("vsf1").columnCount(), 6);
    });
}

TEST_F(BrowserWindow, theNodeOfTheLastUseStaysForAListThatIsNarrowedAgain) {
    stage.open(kManagement, [](User& user) { user.clickNode("tv1", "D14"); });
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(codes(user).size(), 4U);
        frmBasicInfoList::instance().findInfo(1);
        EXPECT_EQ(codes(user), Texts{"02.001"});
        user.clickNode("tv1", "D0");
    });
}

TEST_F(BrowserWindow, aSecondEntryWhileTheWindowIsShownIsRefused) {
    stage.open(kManagement, [&](User& user) {
        clsBasicInfo second;
        EXPECT_THROW(second.mainInterface(3, "", "", stage.connectionString(), 0), std::runtime_error);
        user.clickNode("tv1", "D14");
        EXPECT_EQ(codes(user), Texts{"02.001"});
    });
}

TEST_F(BrowserWindow, theConnectionsAreLetGoWithTheWindow) {
    stage.open(kManagement, [&](User& user) {
        user.clickNode("tv1", "D12");
        EXPECT_FALSE(appState().gConn) << "a command closes its own";
        EXPECT_EQ(stage.connectionsAlive(), 1) << "the list keeps one";
    });
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(BrowserWindow, enterInTheSearchBoxMovesOn) {
    stage.open(kManagement, [](User& user) {
        user.type("txtSearch", "螺");
        user.press("Enter");
        EXPECT_FALSE(user.control<platform::Edit>("txtSearch").hasFocus());
        EXPECT_TRUE(user.control<Button>("cmdFind").hasFocus());
    });
}

TEST_F(BrowserWindow, sizesFollowTheFrames) {
    stage.open(kManagement, [](User& user) {
        for (const auto& [width, height] : {std::pair{19800.F, 8700.F}, {24000.F, 12000.F}, {12000.F, 6000.F}}) {
            user.resizeWindow(width, height);
            const auto& frame1 = user.control<Frame>("Frame1");
            const auto& frame2 = user.control<Frame>("Frame2");
            EXPECT_NEAR(frame2.width(), width * 15120 / 19800, 2);
            EXPECT_NEAR(user.control<Tree>("tv1").height(), frame2.height() - 800, 1);
            EXPECT_NEAR(user.control<Tree>("tv1").width(), frame1.width() - 120, 1);
            EXPECT_NEAR(user.control<ListGrid>("vsf1").width(), frame2.width() - 150, 1);
            EXPECT_NEAR(user.control<ListGrid>("vsf1").height(), frame2.height() - 800, 1);
        }
    });
}

TEST_F(BrowserWindow, theListMakesRoomForTheBillArea) {
    stage.open(kBillPicker, [](User& user) {
        for (const auto& [width, height] : {std::pair{19800.F, 8700.F}, {24000.F, 12000.F}}) {
            user.resizeWindow(width, height);
            const auto& frame2 = user.control<Frame>("Frame2");
            const auto& frame3 = user.control<Frame>("Frame3");
            EXPECT_NEAR(frame3.top(), frame2.height() - frame3.height(), 1);
            EXPECT_NEAR(frame3.width(), frame2.width(), 1);
            EXPECT_NEAR(user.control<platform::EntryGrid>("fps1").width(), frame3.width() - 450, 1);
            const auto& list = user.control<ListGrid>("vsf1");
            EXPECT_NEAR(list.height(), frame2.height() - frame3.height() - 800, 1);
            EXPECT_LE(list.top() + list.height(), frame3.top());
        }
    });
}

TEST_F(BrowserWindow, aHeightOfAHundredOrLessLeavesWhatTheFramesGovern) {
    stage.open(kBillPicker, [](User& user) {
        const float width = user.window().innerWidth();
        const float scale = 100 / user.window().innerHeight();
        auto& list = user.control<ListGrid>("vsf1");
        auto& bill = user.control<Frame>("Frame3");
        // The design's own heights: the list there fills the frame.
        const float listHeight = user.control<Frame>("Frame2").height() - 800;
        const float billTop = bill.top();
        user.resizeWindow(width, 100);
        EXPECT_NEAR(list.height(), listHeight * scale, 1) << "scaled with the window, not set by the frames";
        EXPECT_NEAR(bill.top(), billTop * scale, 1);
        user.resizeWindow(width, 101);
        EXPECT_NEAR(list.height(), user.control<Frame>("Frame2").height() - bill.height() - 800, 1);
    });
}

}  // namespace
}  // namespace orvenmod::test
