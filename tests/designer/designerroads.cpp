#include "designer/designerroads.h"
#include "designer/frmHSXMDetailNew_design.h"
#include "designer/frmHSXMDetailSetup_design.h"
#include "designer/frmHSXMNew_design.h"
#include "designer/frmHSXM_design.h"
#include "support/keyboardwalk.h"

namespace orvenmod::test {
namespace {

TEST_P(DesignerRoads, anAdministratorMakesAClassWithFieldsOfEveryKindAndHidesOne) {
    Database& database = stage.database();
    stage.open([&](User& user) {
        EXPECT_EQ(treeKeys(user), (Texts{"D0", "D1", "D2", "D3", "D11"}));
        stage.makeClass(user, {"50", "设备"});
        EXPECT_EQ(user.control<platform::Tree>("tv1").text("D50"), "设备(50)");
        user.clickNode("tv1", "D50");
        EXPECT_EQ(gridRows(user).size(), 3U);
        stage.inNewField(user, [&](User& dialog) {
            FieldInput weight = numberField("重量");
            for (const FieldInput& made :
                 {weight, FieldInput{.name = "品牌"}, FieldInput{.name = "购置", .type = FieldType::date},
                  FieldInput{.name = "客户", .lookup = 1}}) {
                typeField(dialog, made);
                dialog.answer(MessageKind::information, kFieldSaved);
                dialog.clickTool("Save");
                EXPECT_EQ(dialog.control<platform::EntryGrid>("fps1").text(2, 1), "");
            }
            EXPECT_EQ(gridRows(user).size(), 7U);
            dialog.clickTool("Exit");
        });
        EXPECT_EQ(gridRows(user)[3], (Texts{"50", "重量", "FSelfA1", "数字", "", "1000", "-5", "2", "", "能"}));
        EXPECT_EQ(gridRows(user)[6][4], "客户");
        stage.inSetup(user, [](User& dialog) {
            dialog.clickCell("fps1", 2, 5);
            dialog.clickCell("fps1", 1, 6);
            dialog.chooseMenu("MenuUnLock");
            dialog.typeCell("fps1", 1, 6, "购置日期");
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
            dialog.chooseMenu("MenuFileExit");
        });
        user.chooseMenu("MenuExit");
    });
    EXPECT_EQ(database.rows("select fFieldName,fFieldDesc from tblViewDesc where fTypeId=6050"),
              (Rows{{"fNumber", "代码"},
                    {"fName", "名称"},
                    {"FSelfA1", "重量"},
                    {"FSelfA3", "购置日期"},
                    {"FSelfA4Number", "客户代码"},
                    {"FSelfA4Name", "客户名称"}}));
    stage.finish();
}

TEST_P(DesignerRoads, refusalsLeaveTheDialogsWithWhatWasTyped) {
    stage.withClass({"50", "设备"});
    stage.open([&](User& user) {
        stage.inNewClass(user, [](User& dialog) {
            typeClass(dialog, {"0", "设备"});
            dialog.answer(MessageKind::warning, "类别不能为空或为零！");
            dialog.click("cmdOK");
            EXPECT_TRUE(dialog.control<platform::Edit>("txtType").hasFocus());
            dialog.type("txtType", "51");
            dialog.press("Enter");
            EXPECT_TRUE(dialog.control<platform::Edit>("txt", 0).hasFocus());
            dialog.answer(MessageKind::critical, "输入选项有重名！请核对");
            dialog.click("cmdOK");
            EXPECT_EQ(dialog.control<platform::Edit>("txt", 0).text(), "设备");
            dialog.click("cmdClose");
        });
        user.clickNode("tv1", "D50");
        user.selectRow("vsf1", 1);
        stage.script().onWindow("frmHSXMDetailNew", [](User& dialog) {
            dialog.answer(MessageKind::critical, "名称不能为空");
            dialog.clickTool("Save");
            EXPECT_EQ(dialog.control<platform::EntryGrid>("fps1").activeRow(), 1);
            dialog.typeCell("fps1", 2, 1, "又");
            dialog.typeCell("fps1", 2, 2, "fName");
            dialog.answer(MessageKind::critical, "各表中的列名必须唯一。在表 'tblSelfA1' 中多次指定了列名 'fName'。");
            dialog.clickTool("Save");
            EXPECT_EQ(dialog.control<platform::EntryGrid>("fps1").text(2, 1), "又");
        });
        user.rightClick("vsf1", "MenuDetailNew");
    });
    stage.finish();
}

TEST_P(DesignerRoads, everyWindowIsReachedByKeyboardAndNamedForAScreenReader) {
    for (const platform::WindowDesign* design :
         {&hsxmDesign(), &hsxmNewDesign(), &hsxmDetailNewDesign(), &hsxmDetailSetupDesign()}) {
        SCOPED_TRACE(std::string(design->name));
        walkByKeyboard(stage.script(), *design);
        EXPECT_LE(design->width, 1366 * 15);
        EXPECT_LE(design->height, (768 - 120) * 15);
    }
}

TEST_P(DesignerRoads, aNumberUnlocksItsRowsAndALookupSetsTheTypeBack) {
    stage.open([&](User& user) {
        user.clickNode("tv1", "D2");
        stage.inNewField(user, [](User& dialog) {
            auto& grid = dialog.control<platform::EntryGrid>("fps1");
            EXPECT_TRUE(grid.locked(2, 4));
            dialog.pickCell("fps1", 2, 3, 2);
            EXPECT_FALSE(grid.locked(2, 4));
            dialog.typeCell("fps1", 2, 4, "3");
            dialog.pickCell("fps1", 2, 9, 3);
            EXPECT_EQ(grid.text(2, 3), "字符类型");
            EXPECT_EQ(grid.text(3, 9), "3,0");
            EXPECT_EQ(grid.text(2, 4), "3");
        });
    });
    stage.finish();
}

TEST_P(DesignerRoads, aFieldWhoseMarkIsNeitherYesNorNoCountsAsShown) {
    Database& database = stage.database();
    stage.withClass({"50", "设备"}, {{.name = "甲"}, {.name = "乙"}, {.name = "丙"}});
    const auto marks = [&database] {
        return database.rows("select fIsVisible from tblTableInfo where fItemClassId=50 order by fInterId");
    };
    database.execute("update tblTableInfo set fIsVisible=2 where fItemClassId=50 and fInterId=4");
    database.execute("update tblTableInfo set fIsVisible=-1 where fItemClassId=50 and fInterId=5");
    database.execute("update tblTableInfo set fIsVisible=null where fItemClassId=50 and fInterId=6");
    stage.open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inSetup(user, [](User& dialog) {
            const auto& grid = dialog.control<platform::EntryGrid>("fps1");
            ASSERT_EQ(grid.rowCount(), 6);
            EXPECT_EQ(grid.text(2, 4) + "|" + grid.text(2, 5) + "|" + grid.text(2, 6), "1|1|");
            dialog.clickCell("fps1", 2, 5);
            EXPECT_EQ(grid.text(2, 5), "0") << "a click takes the mark away";
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
        });
    });
    EXPECT_EQ(marks(), (Rows{{"1"}, {"1"}, {"1"}, {"1"}, {"0"}, {"0"}}));
    stage.finish();
}

TEST_P(DesignerRoads, anEmptyStockSettingIsToldByItsNumberAndTheWindowLivesOn) {
    stage.withClass({"50", "设备"});
    stage.database().execute("insert into tblSystemInfo(fTypeId,fValue) values(71,null)");
    stage.open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inSetup(user, [&](User& dialog) {
            dialog.answer(MessageKind::critical, "库存设置 71 (按仓位管理) 为空");
            dialog.clickTool("Save");
            stage.database().execute("update tblSystemInfo set fValue='1'");
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
        });
    });
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
