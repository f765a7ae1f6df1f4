// The manager of the dictionaries: its tree and list, its commands and their refusals.
#include "dictionary/dictionarytest.h"
#include "dictionary/frmJCBasicInfo.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"

namespace orvenmod::test {
namespace {

using platform::ListGrid;
using platform::Menu;
using platform::Tree;

const std::string kPickFirst = "请选择基础资料";

class DictionaryManager : public DictionaryTest {
protected:
    void expectRefused(const std::string& right, const std::function<void(User&)>& command) {
        appState().gIsAdmin = 0;
        stage.openManager([&](User& user) {
            user.clickNode("tv1", "D501");
            user.selectRow("vsf1", 1);
            stage.forgetStatements();
            user.answer(MessageKind::warning, kRefusal);
            command(user);
            EXPECT_EQ(stage.statements(),
                      Texts{"select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='" + right + "'"});
        });
    }
};

TEST_F(DictionaryManager, captionsAreThoseOfTheDesign) {
    stage.openManager([](User& user) {
        const std::pair<const char*, const char*> kMenus[] = {{"MenuFile", "文件(&F)"},
                                                              {"MenuClose", "关闭"},
                                                              {"MenuJCZL", "类别(&J)"},
                                                              {"MenuJCZLNew1", "新增资料类别"},
                                                              {"MenuJCZLUpdate1", "修改资料类别"},
                                                              {"MenuEdit", "明细编辑(&E)"},
                                                              {"MenuJCZLNew", "新增明细资料"},
                                                              {"MenuUpdateJCZL", "修改明细资料"},
                                                              {"MenuDelJCZL", "删除明细资料"}};
        for (const auto& [name, caption] : kMenus)
            EXPECT_EQ(user.control<Menu>(name).caption(), caption) << name;
        const auto& vsf1 = user.control<ListGrid>("vsf1");
        EXPECT_EQ(vsf1.columnCount(), 3);
        EXPECT_EQ((Texts{vsf1.text(0, 0), vsf1.text(0, 1), vsf1.text(0, 2)}), (Texts{"", "代码", "名称"}));
        EXPECT_TRUE(vsf1.columnHidden(0));
        EXPECT_EQ(vsf1.columnWidth(0), 900);
        EXPECT_EQ(vsf1.columnWidth(1), 1875);
        EXPECT_EQ(vsf1.columnWidth(2), 2220);
    });
}

TEST_F(DictionaryManager, loadingReadsTheDictionariesIntoTheTree) {
    stage.openManager([this](User& user) {
        EXPECT_EQ(stage.statements(),
                  Texts{"select fitemclassid,fitemname from tblItemclass where fitemtype='1' order by fitemclassid "});
        const auto& tv1 = user.control<Tree>("tv1");
        EXPECT_EQ(tv1.count(), 3);
        EXPECT_EQ(tv1.text("D0"), "基础资料");
        EXPECT_EQ(tv1.text("D501"), "单位(501)");
        EXPECT_EQ(tv1.text("D502"), "颜色(502)");
        EXPECT_EQ(tv1.parent("D501"), "D0");
        EXPECT_TRUE(tv1.expanded("D0"));
        EXPECT_EQ(listRows(user), Rows{});
    });
}

TEST_F(DictionaryManager, aFailureWhileItLoadsGoesToWhoeverShowsIt) {
    database().execute("drop table tblItemClass");
    EXPECT_THROW(frmJCBasicInfo::instance().show(), store::Failure);
    closeDB();
}

TEST_F(DictionaryManager, aClickOnADictionaryListsItsEntriesByCode) {
    stage.openManager([this](User& user) {
        stage.forgetStatements();
        user.clickNode("tv1", "D501");
        EXPECT_EQ(stage.statements(),
                  Texts{"select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber "});
        EXPECT_EQ(listRows(user), (Rows{{"1", "01", "个"}, {"2", "02", "箱"}, {"3", "03", "吨"}}));
        EXPECT_EQ(appState().gItemClassId, 501);
        EXPECT_EQ(appState().gItemName, "单位(501)");
    });
}

TEST_F(DictionaryManager, aClickOnTheRootClearsTheList) {
    stage.openManager([](User& user) {
        user.clickNode("tv1", "D501");
        user.clickNode("tv1", "D0");
        EXPECT_EQ(listRows(user), Rows{});
        EXPECT_EQ(appState().gItemClassId, 0);
        user.answer(MessageKind::warning, "请选择基础资料类别进行新增");
        user.chooseMenu("MenuJCZLNew");
        user.answer(MessageKind::warning, "请选择基础资料类别进行修改");
        user.chooseMenu("MenuJCZLUpdate1");
    });
}

TEST_F(DictionaryManager, aClickOnNoNodeIsTold) {
    stage.openManager([this](User& user) {
        user.answer(MessageKind::critical, kPickFirst);
        user.control<Tree>("tv1").nodeClick.raise("");
        EXPECT_EQ(script().messages().back().title, kTitle);
    });
}

TEST_F(DictionaryManager, withoutANodeNothingIsAddedOrChanged) {
    stage.openManager([](User& user) {
        user.control<Tree>("tv1").select("");
        user.answer(MessageKind::critical, kPickFirst);
        user.chooseMenu("MenuJCZLNew");
        user.answer(MessageKind::critical, kPickFirst);
        user.chooseMenu("MenuJCZLUpdate1");
    });
}

TEST_F(DictionaryManager, aFailedListIsToldByAWarning) {
    stage.openManager([this](User& user) {
        stage.faults().count = 0;
        stage.faults().failAt = 2;
        user.answer(MessageKind::warning, kFault);
        user.clickNode("tv1", "D501");
        stage.faults().failAt = 0;
        user.clickNode("tv1", "D501");
        EXPECT_EQ(listRows(user).size(), 3U);
    });
}

TEST_F(DictionaryManager, aRightClickOpensTheMenuOfTreeAndList) {
    stage.openManager([this](User& user) {
        user.clickNode("tv1", "D501");
        script().onWindow("frmJCZLType", [](User&) {});
        user.rightClick("tv1", "MenuJCZLNew1");
        script().onWindow("frmJCZL", [](User&) { EXPECT_EQ(appState().gEditMode, 0); });
        user.rightClick("vsf1", "MenuJCZLNew");
    });
}

TEST_F(DictionaryManager, aDoubleClickOpensTheEntryForAChange) {
    stage.openManager([this](User& user) {
        user.clickNode("tv1", "D501");
        script().onWindow("frmJCZL", [](User& dialog) {
            EXPECT_EQ(dialog.window().caption(), "单位(501)修改");
            EXPECT_EQ(appState().gCurItemId, 2);
            EXPECT_EQ(appState().gEditMode, 1);
        });
        user.doubleClickRow("vsf1", 2);
    });
}

TEST_F(DictionaryManager, theNewEntrysDictionaryIsTheSelectedNodes) {
    stage.openManager([this](User& user) {
        user.clickNode("tv1", "D501");
        appState().gItemClassId = 7;
        script().onWindow("frmJCZL", [](User&) { EXPECT_EQ(appState().gItemClassId, 501); });
        user.chooseMenu("MenuJCZLNew");
    });
}

TEST_F(DictionaryManager, aNewDictionaryNeedsRight01) {
    expectRefused("Z01", [](User& user) { user.chooseMenu("MenuJCZLNew1"); });
}
TEST_F(DictionaryManager, aChangeOfADictionaryNeedsRight02) {
    expectRefused("Z02", [](User& user) { user.chooseMenu("MenuJCZLUpdate1"); });
}
TEST_F(DictionaryManager, aNewEntryNeedsRight04) {
    expectRefused("Z04", [](User& user) { user.chooseMenu("MenuJCZLNew"); });
}
TEST_F(DictionaryManager, aChangeOfAnEntryNeedsRight05) {
    expectRefused("Z05", [](User& user) { user.doubleClickRow("vsf1", 1); });
}
TEST_F(DictionaryManager, aDeleteNeedsRight06) {
    expectRefused("Z06", [](User& user) { user.chooseMenu("MenuDelJCZL"); });
}

TEST_F(DictionaryManager, withoutARowNothingIsChangedOrDeleted) {
    stage.openManager([this](User& user) {
        stage.forgetStatements();
        user.chooseMenu("MenuUpdateJCZL");
        user.chooseMenu("MenuDelJCZL");
        user.clickNode("tv1", "D501");
        user.control<ListGrid>("vsf1").setCurrentRow(0);
        user.chooseMenu("MenuUpdateJCZL");
        user.chooseMenu("MenuDelJCZL");
        EXPECT_EQ(stage.statements().size(), 1U);
    });
}

TEST_F(DictionaryManager, theMenuAndTheToolbarCloseIt) {
    stage.openManager([](User& user) {
        user.chooseMenu("MenuClose");
        EXPECT_FALSE(user.window().shown());
    });
    stage.openManager([](User& user) {
        user.clickTool("Exit");
        EXPECT_FALSE(user.window().shown());
    });
}

TEST_F(DictionaryManager, itsControlsFollowItsSize) {
    stage.openManager([](User& user) {
        const auto& vsf1 = user.control<ListGrid>("vsf1");
        const float left = vsf1.left();
        const float width = vsf1.width();
        user.resizeWindow(user.window().innerWidth() * 2, user.window().innerHeight() * 2);
        EXPECT_NEAR(vsf1.left(), left * 2, 1);
        EXPECT_NEAR(vsf1.width(), width * 2, 1);
    });
}

}  // namespace
}  // namespace orvenmod::test
