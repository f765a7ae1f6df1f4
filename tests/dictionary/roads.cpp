#include "dictionary/roads.h"

#include "dictionary/frmJCBasicInfo_design.h"
#include "dictionary/frmJCZLList_design.h"
#include "dictionary/frmJCZLType_design.h"
#include "dictionary/frmJCZL_design.h"
#include "frame/appstate.h"
#include "support/keyboardwalk.h"
#include "support/spreadsheet.h"

namespace orvenmod::test {
namespace {

using platform::Edit;
using platform::ListGrid;
using platform::Tree;

TEST_P(DictionaryRoads, everyWindowIsWorkedByKeyboard) {
    for (const platform::WindowDesign* design :
         {&dictionariesDesign(), &entryListDesign(), &dictionaryDesign(), &entryDesign()}) {
        SCOPED_TRACE(design->name);
        walkByKeyboard(stage.script(), *design);
    }
}

TEST_P(DictionaryRoads, aDictionaryIsCreatedAndFilled) {
    stage.openManager([this](User& manager) {
        stage.script().onWindow("frmJCZLType", [](User& user) {
            user.type("txt1", "503");
            user.press("Enter");
            EXPECT_TRUE(user.control<Edit>("txt").hasFocus());
            user.type("txt", "材质");
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
            user.click("cmdClose");
        });
        manager.rightClick("tv1", "MenuJCZLNew1");
        manager.clickNode("tv1", "D503");
        stage.script().onWindow("frmJCZL", [](User& user) {
            EXPECT_EQ(user.window().caption(), "材质新增");
            user.type("txt", "01", 0);
            user.type("txt", "钢", 1);
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
            EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
        });
        manager.chooseMenu("MenuJCZLNew");
        EXPECT_EQ(listRows(manager), Rows{});
        manager.clickNode("tv1", "D503");
        EXPECT_EQ(listRows(manager), (Rows{{"5", "01", "钢"}}));
    });
}

TEST_P(DictionaryRoads, aChangeOfADictionaryIsRefusedTwice) {
    stage.openManager([this](User& manager) {
        manager.clickNode("tv1", "D501");
        stage.script().onWindow("frmJCZLType", [](User& user) {
            EXPECT_FALSE(user.control<Edit>("txt1").enabled());
            user.type("txt", "计量单位");
            user.answer(MessageKind::warning, "类别ID已经存在，请重新输入！");
            user.answer(MessageKind::warning, "无效的过程调用或参数");
            user.click("cmdOK");
        });
        manager.chooseMenu("MenuJCZLUpdate1");
    });
}

TEST_P(DictionaryRoads, anEntryIsChangedAndDeleted) {
    stage.openList(501, 0, [this](User& list) {
        stage.script().onWindow("frmJCZL", [](User& user) {
            EXPECT_EQ(user.control<Edit>("txt", 0).text(), "02");
            user.type("txt", "大箱", 1);
            user.answer(MessageKind::information, kChanged);
            user.click("cmdOK");
        });
        list.doubleClickRow("vsf1", 2);
        list.selectRow("vsf1", 3);
        list.answer(MessageKind::question, kAskDelete, Answer::yes);
        list.answer(MessageKind::information, kDeleted);
        list.click("cmd", 3);
        EXPECT_TRUE(list.control<ListGrid>("vsf1").isSelected(2));
    });
    EXPECT_EQ(stage.entries()[1][2], "大箱");
    EXPECT_EQ(stage.entries().size(), 3U);
}

TEST_P(DictionaryRoads, anEntryIsPicked) {
    stage.openList(501, 1, [](User& list) {
        list.doubleClickRow("vsf1", 3);
        EXPECT_FALSE(list.window().shown());
    });
    EXPECT_EQ(appState().gRetName, "吨");
}

TEST_P(DictionaryRoads, thePickersListIsWorkedByArrowKeysAndEnterPicksNothing) {
    stage.openList(501, 1, [this](User& list) {
        const auto& vsf1 = list.control<platform::ListGrid>("vsf1");
        EXPECT_TRUE(vsf1.hasFocus());
        EXPECT_EQ(vsf1.currentRow(), 1);
        EXPECT_TRUE(vsf1.isSelected(1));
        for (const int row : {2, 3}) {
            list.press("Down");
            EXPECT_EQ(vsf1.currentRow(), row);
        }
        list.press("Up");
        EXPECT_TRUE(vsf1.isSelected(2));
        EXPECT_FALSE(vsf1.isSelected(3));
        list.press("Enter");
        EXPECT_TRUE(list.window().shown());
        stage.script().onWindow("frmJCZL",
                                [](User& user) { EXPECT_EQ(user.control<platform::Edit>("txt", 1).text(), "箱"); });
        list.click("cmd", 2);
    });
    EXPECT_EQ(appState().gRetItemId, "");
}

TEST_P(DictionaryRoads, theFirstEntryIsMeantAfterARefreshAndAPopupMeansTheClickedOne) {
    stage.openManager([this](User& manager) {
        manager.clickNode("tv1", "D501");
        const auto& vsf1 = manager.control<ListGrid>("vsf1");
        EXPECT_EQ(vsf1.currentRow(), 1);
        EXPECT_TRUE(vsf1.isSelected(1));
        stage.script().onWindow("frmJCZL", [](User& user) { EXPECT_EQ(user.control<Edit>("txt", 0).text(), "01"); });
        manager.chooseMenu("MenuUpdateJCZL");
        stage.script().onWindow("frmJCZL", [](User& user) { EXPECT_EQ(user.control<Edit>("txt", 0).text(), "03"); });
        manager.rightClickRow("vsf1", 3, "MenuUpdateJCZL");
        manager.clickNode("tv1", "D0");
        EXPECT_EQ(vsf1.currentRow(), 0) << "the root has no entries";
        manager.rightClickNode("tv1", "D501", "");
        EXPECT_EQ(vsf1.rowCount(), 4);
        manager.clickTool("Exit");
    });
}

TEST_P(DictionaryRoads, aDoubleClickOnTheHeadingChangesAndPicksNothing) {
    stage.openManager([](User& manager) {
        manager.clickNode("tv1", "D501");
        manager.doubleClickRow("vsf1", 0);
        manager.clickTool("Exit");
    });
    stage.openList(501, 1, [](User& list) {
        list.doubleClickRow("vsf1", 0);
        EXPECT_TRUE(list.window().shown());
    });
    EXPECT_EQ(appState().gRetItemId, "");
}

TEST_P(DictionaryRoads, theListIsExported) {
    const std::string file = stage.database().folder().file("单位.xls");
    stage.openManager([&](User& manager) {
        manager.clickNode("tv1", "D501");
        manager.chooseFile(file);
        manager.answer(MessageKind::information, "导出成功!");
        manager.clickTool("Excel");
        manager.clickTool("Exit");
    });
    EXPECT_EQ(readSpreadsheet(file),
              (Rows{{"", "代码", "名称"}, {"1", "01", "个"}, {"2", "02", "箱"}, {"3", "03", "吨"}}));
}

}  // namespace
}  // namespace orvenmod::test
