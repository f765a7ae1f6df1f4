// frmHSXM: the tree of classes, the grid of fields, and the commands that open the dialogs.
#include <orvenmod/clsHSXMManage.h>

#include "designer/designertest.h"
#include "designer/frmHSXM_design.h"

namespace orvenmod::test {
namespace {

constexpr const char* kClasses = "select  * from tblItemclass where fitemtype='0' order by fItemclassid";

std::string fieldsOf(const std::string& id) {
    return "select a.*,b.fItemname as fItemName from tbltableinfo as a left outer join tblItemClass as b on  "
           "a.fvalueitemid=b.fitemclassid   where  a.fitemclassid=" +
           id + " order by a.finterid ";
}

void addField(Database& database, const std::string& values) {
    database.execute(
        "insert into tblTableInfo(fItemClassId,fInterId,fName,fFieldName,fFieldType,fIsNull,fIsVisible,FMaxNumber,"
        "FMinNumber,fNumberDec,fDefaultValue,fValueItemId,fItemType) values(" +
        values + ")");
}

void addClass(Database& database, const std::string& id, const std::string& name) {
    database.execute("insert into tblItemClass(fItemClassId,fItemName,fItemTable,fItemType,fViewName) values(" + id +
                     ",'" + name + "','tblSelf" + id + "','0','vtblSelf" + id + "')");
}

class ClassBrowserTest : public DesignerTest {};

TEST_F(ClassBrowserTest, theTreeShowsTheClassesInNumericOrderUnderAnOpenRoot) {
    addClass(database(), "100", "车辆");
    addClass(database(), "20", "设备");
    stage.withDictionary(12, "颜色");
    open([&](User& user) {
        EXPECT_EQ(user.window().caption(), "核算项目管理");
        EXPECT_EQ(treeKeys(user), (Texts{"D0", "D1", "D2", "D3", "D11", "D20", "D100"}));
        const auto& tree = user.control<platform::Tree>("tv1");
        EXPECT_EQ(tree.text("D0"), "核算项目");
        EXPECT_EQ(tree.text("D20"), "设备(20)");
        EXPECT_EQ(tree.parent("D20"), "D0");
        EXPECT_TRUE(tree.expanded("D0"));
        EXPECT_EQ(tree.selected(), "");
    });
    EXPECT_EQ(stage.statements(), (Texts{kClasses}));
    stage.finish();
}

TEST_F(ClassBrowserTest, theGridHasElevenColumnsWithTheirWidthsAndAlignments) {
    open([](User& user) {
        const auto& grid = user.control<platform::ListGrid>("vsf1");
        const Texts titles = {"",       "名称",       "字段名", "数据类型", "核算项目",    "最大值",
                              "最小值", "小数点位数", "缺省值", "能否为空", "取自核算类别"};
        const std::vector<int> widths = {900, 1515, 1155, 1605, 1440, 1035, 1005, 1140, 1125, 1095, 1470};
        const std::vector<int> alignments = {1, 1, 1, 7, 4, 7, 7, 7, 4, 1, 1};
        ASSERT_EQ(grid.columnCount(), 11);
        ASSERT_EQ(grid.rowCount(), 1);
        for (int column = 0; column < 11; ++column) {
            const auto at = static_cast<std::size_t>(column);
            EXPECT_EQ(grid.text(0, column), titles[at]);
            EXPECT_EQ(grid.columnWidth(column), widths[at]) << titles[at];
            EXPECT_EQ(grid.columnAlignment(column), alignments[at]) << titles[at];
        }
    });
}

TEST_F(ClassBrowserTest, aClickOnAClassShowsItsFieldsInOrderHiddenOnesToo) {
    addClass(database(), "50", "设备");
    addField(database(), "50,3,'名称','fName',1,1,1,null,null,null,'',0,''");
    addField(database(), "50,1,'短代码','fShortNumber',1,1,0,null,null,null,null,null,null");
    addField(database(), "50,4,'重量','FSelfA1',13,0,1,99.5,-1,2,'0',0,''");
    addField(database(), "50,5,'客户','FSelfA2',1,0,1,0,0,0,'',1,'0'");
    addField(database(), "50,6,'购置','FSelfA3',0,0,1,0,0,0,'',0,''");
    addField(database(), "50,7,'价格','FSelfA4',12,0,1,0,0,0,'',0,'1'");
    stage.open([&](User& user) {
        stage.forgetStatements();
        user.clickNode("tv1", "D50");
        EXPECT_EQ(gridRows(user),
                  (Rows{{"50", "短代码", "fShortNumber", "字符类型", "", "", "", "", "", "不能"},
                        {"50", "名称", "fName", "字符类型", "", "", "", "", "", "不能"},
                        {"50", "重量", "FSelfA1", "数字", "", "99.5", "-1", "2", "0", "能"},
                        {"50", "客户", "FSelfA2", "字符类型", "客户", "0", "0", "0", "", "能", "核算项目"},
                        {"50", "购置", "FSelfA3", "日期", "", "0", "0", "0", "", "能"},
                        {"50", "价格", "FSelfA4", "货币", "", "0", "0", "0", "", "能", "子核算项目"}}));
        EXPECT_EQ(frmItem::instance().txtParamSQL, "50");
        EXPECT_EQ(frmItem::instance().txtTable, "tblSelf50");
    });
    EXPECT_EQ(stage.statements(), (Texts{fieldsOf("50"), "select * from tblItemClass where fitemclassid=50"}));
}

TEST_F(ClassBrowserTest, anotherTypeIsAnEmptyCellAndANullFlagMovesTheWordBehindIt) {
    addClass(database(), "50", "设备");
    addField(database(), "50,4,'甲','f1',7,null,1,0,0,0,'',1,'0'");
    addField(database(), "50,5,'乙','f2',null,2,1,0,0,0,'',1,'1'");
    open([](User& user) {
        user.clickNode("tv1", "D50");
        EXPECT_EQ(gridRows(user), (Rows{{"50", "甲", "f1", "", "客户", "0", "0", "0", "", "核算项目"},
                                        {"50", "乙", "f2", "", "客户", "0", "0", "0", "", "子核算项目"}}));
    });
}

TEST_F(ClassBrowserTest, aLookupOfAClassThatIsGoneKeepsItsWordAndShowsNoName) {
    addClass(database(), "50", "设备");
    addField(database(), "50,4,'甲','f1',1,1,1,0,0,0,'',77,'0'");
    open([](User& user) {
        user.clickNode("tv1", "D50");
        EXPECT_EQ(gridRows(user), (Rows{{"50", "甲", "f1", "字符类型", "", "0", "0", "0", "", "不能", "核算项目"}}));
    });
}

TEST_F(ClassBrowserTest, theRootEmptiesTheGridAndAClassWithoutFieldsShowsNone) {
    addClass(database(), "50", "设备");
    open([](User& user) {
        user.clickNode("tv1", "D1");
        EXPECT_GT(gridRows(user).size(), 3U);
        user.clickNode("tv1", "D50");
        EXPECT_TRUE(gridRows(user).empty());
        user.clickNode("tv1", "D1");
        user.clickNode("tv1", "D0");
        EXPECT_TRUE(gridRows(user).empty());
        EXPECT_EQ(frmItem::instance().txtParamSQL, "0");
        EXPECT_EQ(frmItem::instance().txtTable, "tblCustomer");
    });
}

TEST_F(ClassBrowserTest, theDetailCommandsDoNothingWithoutAClass) {
    open([](User& user) {
        user.chooseMenu("MenuDetailNew");
        user.chooseMenu("MenuDetailSetup");
        user.clickNode("tv1", "D0");
        user.chooseMenu("MenuDetailNew");
        user.chooseMenu("MenuDetailSetup");
    });
    EXPECT_TRUE(script().messages().empty());
    stage.finish();
}

TEST_F(ClassBrowserTest, theDetailCommandsHandTheClassOverEachInItsWay) {
    open([&](User& user) {
        user.clickNode("tv1", "D2");
        appState().gItemClassId = 0;
        stage.inSetup(user, [](User&) {
            EXPECT_EQ(frmItem::instance().txtFItemClassId, "2");
            EXPECT_EQ(appState().gItemClassId, 0);
        });
        stage.inNewField(user, [](User&) { EXPECT_EQ(appState().gItemClassId, 2); });
    });
    stage.finish();
}

TEST_F(ClassBrowserTest, theNewCommandTellsTheDialogToSave) {
    open([&](User& user) {
        script().onWindow("frmHSXMNew", [](User& dialog) {
            EXPECT_EQ(frmItem::instance().txtIsUpdate, "0");
            dialog.click("cmdClose");
        });
        user.clickTool("New");
        stage.inNewClass(user, [](User& dialog) { dialog.closeWindow(); });
    });
    stage.finish();
}

TEST_F(ClassBrowserTest, theRightButtonOnTheGridPopsTheDetailMenuUp) {
    open([&](User& user) {
        user.clickNode("tv1", "D2");
        user.selectRow("vsf1", 1);
        script().onWindow("frmHSXMDetailNew", [](User& dialog) { dialog.chooseMenu("MenuFileExit"); });
        user.rightClick("vsf1", "MenuDetailNew");
    });
    stage.finish();
}

TEST_F(ClassBrowserTest, menuAndToolbarLeaveTheWindowAndItOpensAgain) {
    open([](User& user) {
        user.chooseMenu("MenuExit");
        EXPECT_FALSE(user.window().shown());
    });
    open([](User& user) {
        EXPECT_TRUE(gridRows(user).empty());
        user.clickTool("Exit");
        EXPECT_FALSE(user.window().shown());
    });
    stage.finish();
}

TEST_F(ClassBrowserTest, theEntryForChangedClassesIsNotAvailable) {
    open([](User& user) {
        EXPECT_EQ(user.control<platform::Menu>("MenuHSXMUpdate").caption(), "核算项目修改");
        EXPECT_FALSE(user.control<platform::Menu>("MenuHSXMUpdate").enabled());
    });
}

TEST_F(ClassBrowserTest, noRightIsAsked) {
    stage.set("SystemLogin", "IsAdmin", "0");
    open([&](User& user) {
        stage.makeClass(user, {"50", "设备"});
        user.clickNode("tv1", "D50");
        stage.makeField(user, {.name = "品牌"});
    });
    EXPECT_EQ(database().value("select count(*) from tblItemClass where fItemClassId=50"), "1");
    stage.finish();
}

TEST_F(ClassBrowserTest, aFailureWhileFieldsAreShownLeavesTheWindowUsable) {
    open([&](User& user) {
        user.clickNode("tv1", "D1");
        const Rows before = gridRows(user);
        // connect, fields, class: the second fails before the grid is cut back, the third after it is filled
        for (const int failing : {2, 3}) {
            stage.faults() = {.failAt = failing};
            user.answer(MessageKind::critical, kFault);
            user.clickNode("tv1", "D2");
            EXPECT_EQ(appState().gConn, nullptr);
            EXPECT_EQ(gridRows(user) == before, failing == 2);
        }
        stage.faults() = {};
        user.clickNode("tv1", "D1");
        EXPECT_EQ(gridRows(user), before);
    });
    EXPECT_EQ(script().messages().front().title, "测试套件");
    stage.finish();
}

TEST_F(ClassBrowserTest, aFailureWhileTheTreeIsFilledGoesToTheHost) {
    for (const int failing : {1, 2}) {
        stage.faults() = {.failAt = failing};
        clsHSXMManage manage;
        manage.DBConnection = stage.connectionString();
        try {
            manage.mainInterface();
            ADD_FAILURE() << "the host hears nothing";
        } catch (const std::runtime_error& failure) {
            EXPECT_EQ(failure.what(), kFault);
        }
    }
    stage.faults() = {};
    open([](User& user) { EXPECT_EQ(treeKeys(user).size(), 5U); });
    stage.finish();
}

TEST_F(ClassBrowserTest, controlsFollowTheWindowAndItFitsASmallScreen) {
    EXPECT_LE(hsxmDesign().width, 1366 * 15);
    EXPECT_LE(hsxmDesign().height, (768 - 120) * 15);
    open([](User& user) {
        const auto& tree = user.control<platform::Tree>("tv1");
        const auto& grid = user.control<platform::ListGrid>("vsf1");
        const float width = user.window().innerWidth();
        const float height = user.window().innerHeight();
        const float treeWidth = tree.width();
        const float gridHeight = grid.height();
        user.resizeWindow(width / 2, height / 2);
        EXPECT_NEAR(tree.width(), treeWidth / 2, 16);
        EXPECT_NEAR(grid.height(), gridHeight / 2, 16);
        user.resizeWindow(width, height);
        EXPECT_NEAR(tree.width(), treeWidth, 16);
    });
}

}  // namespace
}  // namespace orvenmod::test
