// frmHSXMDetailNew: the form, its lists and locks, and the statements that add a field.
#include "designer/designertest.h"

namespace orvenmod::test {
namespace {

const std::string kRowHead =
    "insert into tblTableInfo(fIsvisible,finterid,fitemclassid,fname,fFieldName "
    ",fNumberDec,FMaxNumber,FMinNumber,fDefaultValue,fIsNull,fValueItemID,fItemType,fFieldType) values(1,";

platform::EntryGrid& grid(User& dialog) { return dialog.control<platform::EntryGrid>("fps1"); }

Texts columnTexts(User& dialog, int column) {
    Texts texts;
    for (int row = 1; row <= grid(dialog).rowCount(); ++row)
        texts.push_back(grid(dialog).text(column, row));
    return texts;
}

bool numberRowsLocked(User& dialog) {
    const bool locked = grid(dialog).locked(2, 4);
    for (int row = 4; row <= 6; ++row) {
        EXPECT_EQ(grid(dialog).locked(2, row), locked) << row;
        EXPECT_EQ(grid(dialog).locked(3, row), locked) << row;
    }
    return locked;
}

class NewFieldTest : public DesignerTest {
protected:
    /// The window for class 50, of which it makes one first.
    void inForm(const Steps& steps) {
        if (database().value("select count(*) from tblItemClass where fItemClassId=50") == "0") {
            stage.withClass({"50", "设备"});
        }
        open([&](User& user) {
            user.clickNode("tv1", "D50");
            stage.inNewField(user, steps);
        });
    }

    /// Saves a field; the statements from the insert of its row to the alter of its table.
    Texts changesOf(const FieldInput& made) {
        Texts changes;
        inForm([&](User& dialog) {
            typeField(dialog, made);
            stage.forgetStatements();
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
            changes = {stage.statements().at(2), stage.statements().at(3)};
        });
        return changes;
    }
};

TEST_F(NewFieldTest, theFormOpensWithItsRowsListsAndTheProposal) {
    stage.withDictionary(12, "颜色");
    inForm([&](User& dialog) {
        EXPECT_EQ(dialog.window().caption(), "新增明细信息");
        EXPECT_EQ(grid(dialog).text(1, 0) + grid(dialog).text(2, 0) + grid(dialog).text(3, 0), "名称值隐含列");
        EXPECT_EQ(columnTexts(dialog, 1), (Texts{"名称", "字段名称", "数据类型", "小数点位数", "最大值", "最小值",
                                                 "缺省值", "能否为空", "核算项目或子项目"}));
        EXPECT_EQ(columnTexts(dialog, 2), (Texts{"", "FSelfA1", "字符类型", "", "", "", "", "能", "无"}));
        EXPECT_EQ(columnTexts(dialog, 3), (Texts{"", "", "1", "", "", "", "", "0", "-1,-1"}));
        EXPECT_TRUE(numberRowsLocked(dialog));
        EXPECT_TRUE(grid(dialog).columnHidden(3));
        EXPECT_EQ(appState().gConn, nullptr);
        // every class is offered, the dictionary too
        for (const auto& [item, name, code] :
             {std::tuple{1, "客户", "1,0"}, {5, "颜色", "12,1"}, {6, "设备", "50,0"}}) {
            dialog.pickCell("fps1", 2, 9, item);
            EXPECT_EQ(grid(dialog).text(2, 9), name);
            EXPECT_EQ(grid(dialog).text(3, 9), code);
        }
    });
    const Texts statements = stage.statements();
    EXPECT_EQ(
        Texts(statements.end() - 2, statements.end()),
        (Texts{"select * from tblItemClass ", "select fpreletter,fbillno from tblmaxbillno where ftypeid=1001 "}));
    stage.finish();
}

TEST_F(NewFieldTest, codesFollowTheWordsAndOnlyANumberUnlocksItsRows) {
    inForm([](User& dialog) {
        const Texts codes = {"1", "0", "13", "12"};
        for (int item = 0; item < 4; ++item) {
            dialog.pickCell("fps1", 2, 3, item);
            EXPECT_EQ(grid(dialog).text(3, 3), codes[static_cast<std::size_t>(item)]);
            EXPECT_EQ(numberRowsLocked(dialog), item != 2);
        }
        dialog.pickCell("fps1", 2, 8, 1);
        EXPECT_EQ(grid(dialog).text(3, 8), "1");
    });
}

TEST_F(NewFieldTest, aLookupSetsTheTypeBackAndLeavesTheLocksAsTheyWere) {
    inForm([](User& dialog) {
        dialog.pickCell("fps1", 2, 3, 2);
        dialog.pickCell("fps1", 2, 9, 1);
        EXPECT_EQ(grid(dialog).text(2, 3), "字符类型");
        EXPECT_EQ(grid(dialog).text(3, 3), "1");
        EXPECT_FALSE(numberRowsLocked(dialog));
        dialog.pickCell("fps1", 2, 3, 2);
        dialog.pickCell("fps1", 2, 9, 0);
        EXPECT_EQ(grid(dialog).text(2, 3), "数字");
    });
}

TEST_F(NewFieldTest, aListClosedWithoutAChoiceChangesNothing) {
    inForm([](User& dialog) {
        dialog.pickCell("fps1", 2, 3, 2);
        grid(dialog).comboCloseUp.raise(2, 3, -1);
        EXPECT_EQ(grid(dialog).text(3, 3), "13");
        EXPECT_FALSE(numberRowsLocked(dialog));
    });
}

TEST_F(NewFieldTest, aFieldIsAddedByTheseStatementsInThisOrderAndOneTransaction) {
    inForm([&](User& dialog) {
        typeField(dialog, {.name = " 品牌 ", .field = " fBrand ", .fallback = " 无 "});
        stage.forgetStatements();
        dialog.answer(MessageKind::information, kFieldSaved);
        dialog.clickTool("Save");
    });
    const Texts statements = stage.statements();
    const Texts expected = {
        "select max(finterid) as finterid1 from tbltableinfo where fitemclassid=50",
        "select * from tblItemclass where fitemclassid=50",
        kRowHead + "4,50,'品牌','fBrand','','','',' 无 ','0','0','', 1)",
        "alter table tblSelfA1 add  fBrand  varchar(50)",
        "select * from tblMaxbillno where ftypeid=1001",
        "insert into tblmaxbillno(fpreletter,ftypeid,fbillno) values('A',1001,1) ",
        "select * from tblItemclass where fitemclassid=50",
        "select max(fentryid) as fEntryId1 from tblFindinfoentry2 where ftypeid=6050",
        "drop view vtblSelfA1",
        "select fname,ffieldname,fFieldtype,fItemType,fValueItemId from tblTableInfo where fitemclassid=50 and "
        "fisvisible=1 and fFieldName<>'fShortNumber'   order by finterid ",
        "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values(6050,'fBrand','品牌',0)",
        "insert into tblFindinfoEntry2(fTypeid,fFieldName,fTitleName,fNumType,fItemclassid,fIsDefault,fEntryId,"
        "fNumberName) values(6050,'fBrand','品牌',2,6050,1,3,0)"};
    ASSERT_GT(statements.size(), expected.size());
    EXPECT_EQ(Texts(statements.begin(), statements.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
    EXPECT_EQ(statements[expected.size()].substr(0, 26), "create view vtblSelfA1  as");
    const Texts operations = {"connect", "open",    "open",    "begin",  "execute", "execute",
                              "open",    "execute", "open",    "open",   "execute", "open",
                              "execute", "execute", "execute", "commit", "close"};
    const Texts all = stage.operations();
    EXPECT_EQ(Texts(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(operations.size())), operations);
    EXPECT_EQ(database().rows("select fPreLetter,fBillNo from tblMaxbillno where fTypeId=1001"), (Rows{{"A", "1"}}));
    stage.finish();
}

TEST_F(NewFieldTest, whatIsStoredFollowsTheTypeAndTheLookup) {
    stage.withDictionary(12, "颜色");
    EXPECT_EQ(
        changesOf({.name = "文", .field = "f1", .required = true}),
        (Texts{kRowHead + "4,50,'文','f1','','','','','1','0','', 1)", "alter table tblSelfA1 add  f1  varchar(50)"}));
    EXPECT_EQ(
        changesOf({.name = "日", .field = "f2", .type = FieldType::date}),
        (Texts{kRowHead + "5,50,'日','f2','','','','','0','0','', 0)", "alter table tblSelfA1 add  f2  datetime"}));
    EXPECT_EQ(changesOf(numberField("数", "f3")), (Texts{kRowHead + "6,50,'数','f3','2','1000','-5','','0','0','', 13)",
                                                         "alter table tblSelfA1 add  f3  int"}));
    EXPECT_EQ(changesOf({.name = "币", .field = "f4", .type = FieldType::currency}),
              (Texts{kRowHead + "7,50,'币','f4','','','','','0','0','', 13)", "alter table tblSelfA1 add  f4  int"}));
    EXPECT_EQ(
        changesOf({.name = "客户", .field = "f5", .lookup = 1}),
        (Texts{kRowHead + "8,50,'客户','f5','','','','','0','1','0', 1)", "alter table tblSelfA1 add  f5  int "}));
    FieldInput lookup = numberField("颜色", "f6");
    lookup.lookup = 5;
    EXPECT_EQ(changesOf(lookup), (Texts{kRowHead + "9,50,'颜色','f6','2','1000','-5','','0','12','1', 1)",
                                        "alter table tblSelfA1 add  f6  int "}));
    // in numeric columns the store reads an empty text as 0
    EXPECT_EQ(
        database().rows("select fInterId,fFieldType,fNumberDec,FMaxNumber,FMinNumber,fIsNull,fValueItemId,fItemType "
                        "from tblTableInfo where fItemClassId=50 and fInterId>3 order by fInterId"),
        (Rows{{"4", "1", "0", "0", "0", "1", "0", ""},
              {"5", "0", "0", "0", "0", "0", "0", ""},
              {"6", "13", "2", "1000", "-5", "0", "0", ""},
              {"7", "13", "0", "0", "0", "0", "0", ""},
              {"8", "1", "0", "0", "0", "0", "1", "0"},
              {"9", "1", "2", "1000", "-5", "0", "12", "1"}}));
    stage.finish();
}

TEST_F(NewFieldTest, afterASaveTheFormGoesOnWithTheNextProposalAndTheGridBehindShowsTheField) {
    stage.withClass({"50", "设备"});
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inNewField(user, [&](User& dialog) {
            typeField(dialog, numberField("重量"));
            for (const char* next : {"FSelfA2", "FSelfA3"}) {
                dialog.answer(MessageKind::information, kFieldSaved);
                dialog.clickTool("Save");
                EXPECT_EQ(columnTexts(dialog, 2), (Texts{"", next, "数字", "2", "1000", "-5", "", "能", "无"}));
                EXPECT_EQ(grid(dialog).activeColumn(), 2);
                EXPECT_EQ(grid(dialog).activeRow(), 1);
                dialog.typeCell("fps1", 2, 1, "又");
            }
            EXPECT_EQ(gridRows(user).size(), 5U);
            EXPECT_EQ(gridRows(user)[4], (Texts{"50", "又", "FSelfA2", "数字", "", "1000", "-5", "2", "", "能"}));
        });
    });
    EXPECT_EQ(database().rows("select fPreLetter,fBillNo from tblMaxbillno where fTypeId=1001"), (Rows{{"A", "2"}}));
    stage.finish();
}

TEST_F(NewFieldTest, theCounterIsSharedByAllClassesAndAdvancesForATypedNameToo) {
    stage.withClass({"50", "设备"}, {{.name = "甲", .field = "fOwn"}});
    stage.withClass({"51", "车辆"}, {{.name = "乙"}});
    EXPECT_EQ(database().rows("select fItemClassId,fFieldName from tblTableInfo where fInterId=4 and fItemClassId>=50"),
              (Rows{{"50", "fOwn"}, {"51", "FSelfA2"}}));
}

TEST_F(NewFieldTest, theProposalHoldsTheClassOfFieldSetupWhereThatStands) {
    inForm([](User&) {});
    frmItem::instance().txtFItemClassId = "50";
    database().execute("insert into tblMaxbillno(fTypeId,fPreLetter,fBillNo) values(1001,'Q',11)");
    inForm([](User& dialog) { EXPECT_EQ(grid(dialog).text(2, 2), "FSelf50Q12"); });
    EXPECT_EQ(frmItem::instance().txtFItemClassId, "");
}

TEST_F(NewFieldTest, afterTheWindowClosedTheGridBehindCantBeRefreshedUntilTheNextClickInTheTree) {
    inForm([](User&) {});
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inNewField(user, [](User&) {});
        EXPECT_EQ(frmItem::instance().txtParamSQL, "");
        stage.inNewField(user, [](User& dialog) {
            typeField(dialog, {.name = "品牌"});
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.answer(MessageKind::critical, "关键字 'order' 附近有语法错误。");
            dialog.clickTool("Save");
        });
        EXPECT_EQ(gridRows(user).size(), 3U);
        user.clickNode("tv1", "D50");
        EXPECT_EQ(gridRows(user).size(), 4U);
    });
    stage.finish();
}

TEST_F(NewFieldTest, menuAndToolbarCloseTheWindow) {
    inForm([](User& dialog) {
        dialog.chooseMenu("MenuFileExit");
        EXPECT_FALSE(dialog.window().shown());
    });
    inForm([](User& dialog) {
        dialog.clickTool("Exit");
        EXPECT_FALSE(dialog.window().shown());
    });
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
