// frmHSXMDetailSetup: the grid, the locks, and the statements of a save.
#include "designer/designertest.h"

namespace orvenmod::test {
namespace {

platform::EntryGrid& grid(User& dialog) { return dialog.control<platform::EntryGrid>("fps1"); }

Rows gridCells(User& dialog) {
    Rows rows;
    for (int row = 1; row <= grid(dialog).rowCount(); ++row) {
        rows.push_back({grid(dialog).text(1, row), grid(dialog).text(2, row), grid(dialog).text(4, row)});
    }
    return rows;
}

class FieldSetupTest : public DesignerTest {
protected:
    void inSetup(const std::string& itemClass, const Steps& steps) {
        open([&](User& user) {
            user.clickNode("tv1", "D" + itemClass);
            stage.inSetup(user, steps);
        });
    }
    void save(User& dialog) {
        stage.forgetStatements();
        dialog.answer(MessageKind::information, kFieldSaved);
        dialog.clickTool("Save");
    }
    /// Saves in vain, with one box and nothing changed.
    void refused(User& dialog, const std::string& box) {
        const std::string before = database().dump();
        dialog.answer(MessageKind::critical, box);
        dialog.clickTool("Save");
        EXPECT_EQ(database().dump(), before);
        EXPECT_EQ(appState().gConn, nullptr);
    }
};

TEST_F(FieldSetupTest, theGridShowsEveryFieldWithItsCaptionLocked) {
    stage.withClass({"50", "设备"}, {{.name = "品牌"}});
    database().execute("update tblTableInfo set fIsVisible=0 where fItemClassId=50 and fInterId=4");
    inSetup("50", [&](User& dialog) {
        EXPECT_EQ(stage.statements().back(),
                  "select finterid,fname,fisvisible from tbltableinfo  where fitemclassid=50 order by finterid ");
        EXPECT_EQ(dialog.window().caption(), "基础资料明细设置");
        EXPECT_EQ(gridCells(dialog),
                  (Rows{{"短代码", "1", "1"}, {"代码", "1", "2"}, {"名称", "1", "3"}, {"品牌", "0", "4"}}));
        EXPECT_EQ(grid(dialog).text(1, 0) + grid(dialog).text(2, 0) + grid(dialog).text(3, 0), "列名是否显示列宽");
        EXPECT_TRUE(grid(dialog).columnHidden(3));
        EXPECT_TRUE(grid(dialog).columnHidden(4));
        EXPECT_TRUE(grid(dialog).locked(1, 1));
        EXPECT_FALSE(grid(dialog).locked(2, 1));
        EXPECT_EQ(appState().gConn, nullptr);
    });
    stage.finish();
}

TEST_F(FieldSetupTest, theMenuUnlocksTheActiveRowUntilTheWindowIsOpenedAgain) {
    inSetup("2", [&](User& dialog) {
        dialog.clickCell("fps1", 1, 5);
        dialog.chooseMenu("MenuUnLock");
        EXPECT_FALSE(grid(dialog).locked(1, 5));
        EXPECT_TRUE(grid(dialog).locked(1, 6));
        save(dialog);
        EXPECT_FALSE(grid(dialog).locked(1, 5));
    });
    inSetup("2", [](User& dialog) { EXPECT_TRUE(grid(dialog).locked(1, 5)); });
}

TEST_F(FieldSetupTest, theMenuDoesNothingWithoutAnActiveRow) {
    database().execute("insert into tblItemClass(fItemClassId,fItemName,fItemTable,fItemType) values(50,'空','x','0')");
    inSetup("50", [](User& dialog) {
        EXPECT_EQ(grid(dialog).rowCount(), 0);
        dialog.chooseMenu("MenuUnLock");
    });
    stage.finish();
}

TEST_F(FieldSetupTest, aSaveUpdatesTheRowsFromTheThirdAndRegeneratesBothViews) {
    stage.withClass({"50", "设备"}, {{.name = "品牌", .field = "fBrand"}});
    inSetup("50", [&](User& dialog) {
        appState().gItemClassId = 0;
        dialog.clickCell("fps1", 2, 1);
        dialog.clickCell("fps1", 2, 4);
        dialog.clickCell("fps1", 1, 4);
        dialog.chooseMenu("MenuUnLock");
        dialog.typeCell("fps1", 1, 4, " 牌子 ");
        save(dialog);
        EXPECT_EQ(appState().gItemClassId, 50);
        EXPECT_TRUE(dialog.window().shown());
    });
    const Texts statements = stage.statements();
    const Texts expected = {
        "update tbltableinfo set fisvisible=1,fname='名称' where finterid=3 and fitemclassid=50 ",
        "update tbltableinfo set fisvisible=0,fname='牌子' where finterid=4 and fitemclassid=50 ",
        "select * from tblItemclass where fitemclassid=50",
        "delete from tblViewDesc where ftypeid=6050",
        "drop view  vtblSelfA1",
        "select fname,ffieldname,fFieldtype,fItemType,fValueItemId from tblTableInfo where fitemclassid=50 and "
        "fisvisible=1 and fFieldName<>'fShortNumber'  order by finterid ",
        "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values(6050,'fNumber','代码',0)",
        "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values(6050,'fName','名称',0)"};
    EXPECT_EQ(Texts(statements.begin(), statements.begin() + 8), expected);
    EXPECT_EQ(statements[8].substr(0, 23), "create view vtblSelfA1 ");
    EXPECT_EQ(statements[9], " select fvalue,ftypeid from tblsysteminfo where ftypeid in (61,62,63,71,72) ");
    const Texts operations = stage.operations();
    EXPECT_EQ(operations.at(1), "begin");
    EXPECT_EQ(Texts(operations.end() - 2, operations.end()), (Texts{"commit", "close"}));
    EXPECT_EQ(database().rows("select fIsVisible,fName from tblTableInfo where fItemClassId=50 order by fInterId"),
              (Rows{{"1", "短代码"}, {"1", "代码"}, {"1", "名称"}, {"0", "牌子"}}));
    stage.finish();
}

TEST_F(FieldSetupTest, theRowsOfGoodsAreSavedFromTheFifth) {
    inSetup("3", [&](User& dialog) {
        for (int row = 1; row <= 5; ++row)
            dialog.clickCell("fps1", 2, row);
        save(dialog);
    });
    EXPECT_EQ(stage.statements().front(),
              "update tbltableinfo set fisvisible=0,fname='计量单位' where finterid=5 and fitemclassid=3 ");
    EXPECT_EQ(database().rows("select fInterId from tblTableInfo where fItemClassId=3 and fIsVisible=0"),
              (Rows{{"5"}}));
    EXPECT_EQ(database().rows("select fFieldName from tblViewDesc where fTypeId=6003 and fFieldName='fUnit'"), Rows());
    stage.finish();
}

TEST_F(FieldSetupTest, aClassOfTwoFieldsUpdatesNoneAndRebuildsItsViewsAllTheSame) {
    stage.withClass({"50", "设备"});
    database().execute("delete from tblTableInfo where fItemClassId=50 and fInterId=3");
    inSetup("50", [&](User& dialog) { save(dialog); });
    EXPECT_EQ(stage.statements().front(), "select * from tblItemclass where fitemclassid=50");
    stage.finish();
}

TEST_F(FieldSetupTest, aNameFieldMayBeHiddenAndLeavesTheView) {
    stage.withClass({"50", "设备"});
    inSetup("50", [&](User& dialog) {
        dialog.clickCell("fps1", 2, 3);
        save(dialog);
    });
    EXPECT_THROW(database().rows("select fName from vtblSelfA1"), store::Failure);
    EXPECT_TRUE(database().rows("select fName from tblSelfA1").empty());
}

TEST_F(FieldSetupTest, aSaveWithoutAChangeLeavesTheDatabaseAsItWas) {
    stage.withClass({"50", "设备"}, {{.name = "品牌"}});
    inSetup("50", [&](User& dialog) { save(dialog); });
    const auto contents = [this] {
        return database().rows("select * from tblViewDesc where fTypeId=6050 or fTypeId=5033");
    };
    const Rows before = contents();
    inSetup("50", [&](User& dialog) { save(dialog); });
    EXPECT_EQ(contents(), before);
}

TEST_F(FieldSetupTest, anEmptyCheckBoxIsSavedAsZeroAndAnEmptyCaptionAsItIs) {
    stage.withClass({"50", "设备"}, {{.name = "品牌"}});
    database().execute("update tblTableInfo set fIsVisible=null where fItemClassId=50 and fInterId=4");
    inSetup("50", [&](User& dialog) {
        EXPECT_EQ(grid(dialog).text(2, 4), "");
        dialog.clickCell("fps1", 1, 4);
        dialog.chooseMenu("MenuUnLock");
        dialog.typeCell("fps1", 1, 4, "");
        save(dialog);
    });
    EXPECT_EQ(database().rows("select fIsVisible,fName from tblTableInfo where fItemClassId=50 and fInterId=4"),
              (Rows{{"0", ""}}));
}

TEST_F(FieldSetupTest, aQuoteInACaptionIsRefusedByTheStoreAndRollsEverythingBack) {
    stage.withClass({"50", "设备"}, {{.name = "品牌"}, {.name = "产地"}});
    inSetup("50", [&](User& dialog) {
        dialog.clickCell("fps1", 2, 4);
        dialog.clickCell("fps1", 1, 5);
        dialog.chooseMenu("MenuUnLock");
        dialog.typeCell("fps1", 1, 5, "O'Neil");
        refused(dialog, "字符串 ' where finterid=5 and fitemclassid=50 ' 后的引号不完整。");
        EXPECT_EQ(grid(dialog).text(1, 5), "O'Neil");
        dialog.typeCell("fps1", 1, 5, "产地");
        save(dialog);
    });
    stage.finish();
}

TEST_F(FieldSetupTest, aMissingViewNameOrAFieldWithoutItsColumnRollsEverythingBack) {
    stage.withClass({"50", "设备"}, {{.name = "品牌", .field = "fBrand"}});
    inSetup("50", [&](User& dialog) {
        database().execute("update tblTableInfo set fFieldName='fGone' where fFieldName='fBrand'");
        refused(dialog, "列名 'fGone' 无效。");
        database().execute("update tblItemClass set fViewName=null where fItemClassId=50");
        refused(dialog, "关键字 'view' 附近有语法错误。");
    });
    stage.finish();
}

TEST_F(FieldSetupTest, theGridBehindIsNotRefreshed) {
    stage.withClass({"50", "设备"}, {{.name = "品牌"}});
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        const Rows before = gridRows(user);
        stage.inSetup(user, [&](User& dialog) {
            dialog.clickCell("fps1", 1, 4);
            dialog.chooseMenu("MenuUnLock");
            dialog.typeCell("fps1", 1, 4, "牌子");
            save(dialog);
        });
        EXPECT_EQ(gridRows(user), before);
        user.clickNode("tv1", "D50");
        EXPECT_EQ(gridRows(user)[3][1], "牌子");
    });
}

TEST_F(FieldSetupTest, closingTheWindowEmptiesTheHiddenRecord) {
    open([&](User& user) {
        user.clickNode("tv1", "D2");
        frmItem::instance().txtIsUpdate = "0";
        stage.inSetup(user, [](User& dialog) { dialog.clickTool("Exit"); });
        const frmItem& item = frmItem::instance();
        EXPECT_EQ(item.txtFItemClassId + item.txtIsUpdate + item.txtParamSQL + item.txtTable, "");
        stage.inSetup(user, [](User& dialog) { dialog.chooseMenu("MenuFileExit"); });
    });
    stage.finish();
}

TEST_F(FieldSetupTest, aFailureWhileTheGridIsFilledIsShownAndLeavesAnEmptyGrid) {
    open([&](User& user) {
        user.clickNode("tv1", "D2");
        stage.faults() = {.failAt = 2};
        user.answer(MessageKind::critical, kFault);
        stage.inSetup(user, [&](User& dialog) {
            stage.faults() = {};
            EXPECT_EQ(grid(dialog).rowCount(), 0);
        });
    });
    stage.finish();
}

TEST_F(FieldSetupTest, aStoreThatCantBeReachedKeepsTheWindowFromOpening) {
    open([&](User& user) {
        user.clickNode("tv1", "D2");
        stage.faults() = {.failAt = 1};
        user.answer(MessageKind::critical, kFault);
        user.chooseMenu("MenuDetailSetup");
        stage.faults() = {};
        stage.inSetup(user, [](User& dialog) { EXPECT_GT(grid(dialog).rowCount(), 3); });
    });
    stage.finish();
}

TEST_F(FieldSetupTest, aClassBeyondSixteenBitsFailsOutsideTheTrap) {
    stage.withClass({"40000", "设备"});
    inSetup("40000", [&](User& dialog) {
        dialog.answer(MessageKind::critical, "溢出");
        dialog.clickTool("Save");
        EXPECT_NE(appState().gConn, nullptr);
    });
}

}  // namespace
}  // namespace orvenmod::test
