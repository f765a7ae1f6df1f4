// A change of a category: its statements in their order, what they do to the rows below, and what is refused.
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/categorysave.h"
#include "hierarchy/hierarchytest.h"

namespace orvenmod::test {
namespace {

const std::string kBelowItself = "新分类设置不正确，不能设置在原有分类及其以下分类，请检查！";

class CategoryMove : public HierarchyTest {
protected:
    /// Changes a category as its dialog would.
    bool change(int id, const CategoryChange& wanted) {
        appState().gCurItemId = id;
        stage.forgetStatements();
        return moveCategory(wanted);
    }
};

TEST_F(CategoryMove, sendsItsStatementsInOrderWithinOneTransaction) {
    EXPECT_TRUE(change(13, {"螺钉", "09", "02.09", "14"}));
    EXPECT_EQ(
        stage.statements(),
        (Texts{"select fitemid from tblitem where fnumber='02.09' and fitemclassid=3 and fitemid<>13",
               "select fNBNumber,fDepth,fNumber  from tblItem where fitemid=13",
               "select fnbnumber,fdepth from tblItem where fitemid=14",
               "select fNBNumber from tblItem where fitemid=14 and fDepth>=2 and fNBNumber like '.12.13.%'",
               "update tblItem set fDepth=fDepth+0 where fNBNumber like '.12.13.%' and fitemclassid=3",
               "select fNBNumber,fitemid,fnumber from tblItem where fitemclassid=3  and fNBNumber like '.12.13.%'",
               "update tblItem set fNBNumber='.14.13.' ,fNumber='02.09' where fitemid=13",
               "update ICItem set  fNumber='02.09' where fitemid=13",
               "update tblItem set fNBNumber='.14.13.101.' ,fNumber='02.09.001' where fitemid=101",
               "update ICItem set  fNumber='02.09.001' where fitemid=101",
               "update tblItem set fNBNumber='.14.13.102.' ,fNumber='02.09.002' where fitemid=102",
               "update ICItem set  fNumber='02.09.002' where fitemid=102",
               " update tblItem set fname='螺钉',fParentid=14,fNBNumber='.14.13.',fDepth=2,fShortNumber='09',"
               "fnumber='02.09' where fitemid=13"}));
    EXPECT_EQ(stage.operations(),
              (Texts{"connect", "open", "open", "open", "open", "begin", "execute", "open", "execute", "execute",
                     "execute", "execute", "execute", "execute", "execute", "commit", "close"}));
}

TEST_F(CategoryMove, takesAllBelowAlongInBothTables) {
    EXPECT_TRUE(change(13, {"螺丝", "01", "02.01", "14"}));
    EXPECT_EQ(database().rows("select fitemid,fnumber,fnbnumber,fdepth,fparentid,fshortnumber from tblItem where "
                              "fitemid in (13,101,102) order by fitemid"),
              (Rows{{"13", "02.01", ".14.13.", "2", "14", "01"},
                    {"101", "02.01.001", ".14.13.101.", "3", "13", "001"},
                    {"102", "02.01.002", ".14.13.102.", "3", "13", "002"}}));
    EXPECT_EQ(stage.goods(), (Rows{{"101", "02.01.001"}, {"102", "02.01.002"}, {"103", "02.001"}, {"104", "03"}}));
}

TEST_F(CategoryMove, toTheTopLessensTheDepthByASignedNumber) {
    database().addCategory(3, 15, "01.01.09", "内六角", 13);
    EXPECT_TRUE(change(13, {"螺丝", "09", "09", "0"}));
    EXPECT_EQ(stage.statements()[2],
              "update tblItem set fDepth=fDepth+-1 where fNBNumber like '.12.13.%' and fitemclassid=3");
    EXPECT_EQ(
        database().rows("select fitemid,fdepth,fnbnumber,fparentid from tblItem where fitemid in (13,15) order by "
                        "fitemid"),
        (Rows{{"13", "1", ".13.", "0"}, {"15", "2", ".13.15.", "13"}}));
}

TEST_F(CategoryMove, anOpenDialogMovesByItsCombo) {
    stage.openUpdate(13, [](User& user) {
        user.pick("cmb", 3, 0);
        user.answer(MessageKind::information, kSaved);
        user.click("cmdOperate");
        EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
    });
    EXPECT_EQ(database().value("select fnbnumber from tblItem where fitemid=102"), ".14.13.102.");
    EXPECT_EQ(stage.asked, (std::vector<int>{3, 1}));
}

TEST_F(CategoryMove, underItselfIsRefused) {
    const Rows before = stage.items();
    script().answer(MessageKind::warning, kBelowItself, Answer::ok);
    EXPECT_FALSE(change(12, {"五金", "01", "01.01x", "12"}));
    EXPECT_EQ(script().messages().back().title, kTitle);
    EXPECT_EQ(stage.items(), before);
    EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "open", "open", "open", "close"}));
}

TEST_F(CategoryMove, underADescendantIsRefused) {
    const Rows before = stage.items();
    script().answer(MessageKind::warning, kBelowItself, Answer::ok);
    EXPECT_FALSE(change(12, {"五金", "01", "01.01.01", "13"}));
    EXPECT_EQ(stage.items(), before);
}

TEST_F(CategoryMove, aTakenCodeIsRefused) {
    const Rows before = stage.items();
    script().answer(MessageKind::warning, "代码不能重复!", Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "02", "02", "0"}));
    EXPECT_EQ(stage.items(), before);
    EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "close"}));
}

TEST_F(CategoryMove, itsOwnCodeMayStay) {
    EXPECT_TRUE(change(13, {"螺钉", "01", "01.01", "12"}));
    EXPECT_EQ(database().value("select fname from tblItem where fitemid=13"), "螺钉");
}

TEST_F(CategoryMove, renamingAloneRewritesTheSameRowsWithTheSameValues) {
    const Rows before = stage.items();
    EXPECT_TRUE(change(12, {"五金", "01", "01", "0"}));
    EXPECT_EQ(stage.items(), before);
    // Two reads, the depth, the rows' read, two updates a row of 12, 13, 101 and 102, and the last word.
    EXPECT_EQ(stage.statements().size(), 13U);
}

TEST_F(CategoryMove, theSameCodeOfAnotherClassDoesNotMove) {
    database().addCategory(1, 30, "01", "华东");
    database().addItem(1, 31, "01.7", "客户", 30);
    EXPECT_TRUE(change(12, {"五金", "05", "05", "0"}));
    EXPECT_EQ(database().value("select fnumber from tblItem where fitemid=31"), "01.7");
    EXPECT_EQ(database().value("select fnumber from tblItem where fitemid=101"), "05.01.001");
}

TEST_F(CategoryMove, idsThatBeginAlikeStayApart) {
    database().addCategory(3, 120, "08", "工具");
    database().addItem(3, 121, "08.1", "锤", 120);
    EXPECT_TRUE(change(12, {"五金", "05", "05", "0"}));
    EXPECT_EQ(database().rows("select fnumber,fnbnumber from tblItem where fitemid=121"),
              (Rows{{"08.1", ".120.121."}}));
}

TEST_F(CategoryMove, aCodeThatHoldsTheOldOneFurtherOnKeepsTheTextFromThere) {
    database().execute("update tblItem set fNumber='01.02' where fItemId=13");
    database().execute("update tblItem set fNumber='X01.02.5' where fItemId=101");
    database().execute("update tblItem set fNumber='01.02.01.02' where fItemId=102");
    EXPECT_TRUE(change(13, {"螺丝", "9", "9", "0"}));
    EXPECT_EQ(database().rows("select fnumber from tblItem where fitemid in (101,102) order by fitemid"),
              (Rows{{"9.5"}, {"9.01.02"}}));
}

TEST_F(CategoryMove, codesAreSearchedByCharacterAndExactCase) {
    database().execute("update tblItem set fNumber='甲a' where fItemId=13");
    database().execute("update tblItem set fNumber='甲A.甲a.乙' where fItemId=101");
    database().execute("update tblItem set fNumber='甲a.丙' where fItemId=102");
    EXPECT_TRUE(change(13, {"螺丝", "丁", "丁", "0"}));
    EXPECT_EQ(database().rows("select fnumber from tblItem where fitemid in (101,102) order by fitemid"),
              (Rows{{"丁.乙"}, {"丁.丙"}}));
}

TEST_F(CategoryMove, aChildWhoseCodeWasFreedByHandStopsTheWholeChange) {
    database().execute("update tblItem set fNumber='FREE' where fItemId=102");
    const Rows before = stage.items();
    const Rows goods = stage.goods();
    script().answer(MessageKind::critical, "无效的过程调用或参数", Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "09", "09", "0"}));
    EXPECT_EQ(stage.items(), before);
    EXPECT_EQ(stage.goods(), goods);
    EXPECT_EQ(stage.operations().back(), "close");
    EXPECT_EQ(stage.operations()[stage.operations().size() - 2], "rollback");
    EXPECT_FALSE(appState().gConn);
}

TEST_F(CategoryMove, aChildsCodeInAnotherCaseStopsItToo) {
    database().execute("update tblItem set fNumber='ab' where fItemId=13");
    database().execute("update tblItem set fNumber='AB.1' where fItemId in (101,102)");
    script().answer(MessageKind::critical, "无效的过程调用或参数", Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "09", "09", "0"}));
}

TEST_F(CategoryMove, aChildWithoutACodeStopsItToo) {
    database().execute("update tblItem set fNumber='' where fItemId=102");
    script().answer(MessageKind::critical, "无效的过程调用或参数", Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "09", "09", "0"}));
    database().execute("update tblItem set fNumber=null where fItemId=102");
    script().answer(MessageKind::critical, "无效使用 Null", Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "09", "09", "0"}));
}

TEST_F(CategoryMove, underAParentDeletedMeanwhileDepthAndPathStayEmpty) {
    database().execute("delete from tblItem where fitemid=14");
    EXPECT_TRUE(change(13, {"螺丝", "09", "02.09", "14"}));
    EXPECT_EQ(
        database().rows("select fitemid,fnbnumber,fdepth,fparentid from tblItem where fitemid in (13,101) order by "
                        "fitemid"),
        (Rows{{"13", "", "0", "14"}, {"101", "101.", "1", "13"}}));
}

TEST_F(CategoryMove, aParentWithoutAPathCountsAsEmpty) {
    database().execute("update tblItem set fNBNumber=null where fItemId=14");
    EXPECT_TRUE(change(13, {"螺丝", "09", "02.09", "14"}));
    EXPECT_EQ(database().value("select fnbnumber from tblItem where fitemid=13"), "13.");
}

TEST_F(CategoryMove, aCategoryDeletedMeanwhileFailsAndSoDoesItsRollback) {
    const std::string second = rollbackFailure(stage);
    stage.openUpdate(14, [&](User& user) {
        database().execute("delete from tblItem where fitemid=14");
        user.answer(MessageKind::critical,
                    "BOF 或 EOF 中有一个是“真”，或者当前的记录已被删除，所需的操作要求一个当前的记录。");
        user.answer(MessageKind::critical, second);
        user.click("cmdOperate");
        EXPECT_TRUE(appState().gConn != nullptr);
        closeDB();
    });
    EXPECT_EQ(stage.items().size(), 6U);
}

TEST_F(CategoryMove, aQuoteInTheCodeFailsBeforeTheTransactionAndSoDoesItsRollback) {
    const Rows before = stage.items();
    const std::string second = rollbackFailure(stage);
    stage.openUpdate(13, [&](User& user) {
        user.type("txt", "0'9", 1);
        user.answer(MessageKind::critical, "字符串 ' and fitemclassid=3 and fitemid<>13' 后的引号不完整。");
        user.answer(MessageKind::critical, second);
        user.click("cmdOperate");
        EXPECT_EQ(user.control<platform::Edit>("txt", 1).text(), "0'9");
        closeDB();
    });
    EXPECT_EQ(stage.items(), before);
    EXPECT_EQ(stage.asked, std::vector<int>{3});
}

TEST_F(CategoryMove, aQuoteInTheNameFailsLastAndIsRolledBack) {
    const Rows before = stage.items();
    const Rows goods = stage.goods();
    script().answer(MessageKind::critical, "字符串 ' where fitemid=13' 后的引号不完整。", Answer::ok);
    EXPECT_FALSE(change(13, {"5'件", "09", "02.09", "14"}));
    EXPECT_EQ(stage.items(), before);
    EXPECT_EQ(stage.goods(), goods);
}

TEST_F(CategoryMove, aCodeThatMakesAChildsTooLongIsRolledBack) {
    const Rows before = stage.items();
    script().answer(MessageKind::critical,
                    "将在表“tblItem”的列“fNumber”中截断字符串或二进制数据。截断值:“" + std::string(98, '9') + ".0”。",
                    Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "9", std::string(98, '9'), "0"}));
    EXPECT_EQ(stage.items(), before);
}

TEST_F(CategoryMove, aCodeOfMoreThanAHundredCharactersIsRolledBack) {
    database().addCategory(3, 15, "05", "空");
    const Rows before = stage.items();
    script().answer(MessageKind::critical,
                    "将在表“tblItem”的列“fNumber”中截断字符串或二进制数据。截断值:“" + std::string(100, '9') + "”。",
                    Answer::ok);
    EXPECT_FALSE(change(15, {"空", "9", std::string(101, '9'), "0"}));
    EXPECT_EQ(stage.items(), before);
    EXPECT_EQ(stage.operations()[stage.operations().size() - 2], "rollback");
}

TEST_F(CategoryMove, blanksAroundACodeGoAndInnerOnesStay) {
    stage.openUpdate(13, [](User& user) {
        user.type("txt", " 0 9 ", 1);
        EXPECT_EQ(user.control<platform::Edit>("txt", 2).text(), "01. 0 9 ");
        user.answer(MessageKind::information, kSaved);
        user.click("cmdOperate");
    });
    EXPECT_EQ(database().rows("select fnumber,fshortnumber from tblItem where fitemid in (13,101) order by fitemid"),
              (Rows{{"01. 0 9", "0 9"}, {"01. 0 9.001", "001"}}));
}

TEST_F(CategoryMove, inADialogWithoutCategoriesItFailsAndSoDoesItsRollback) {
    const Rows before = stage.items();
    const std::string second = rollbackFailure(stage);
    stage.open([&](User& list) {
        list.clickNode("tv1", "D13");
        stage.faults() = {.failAt = 1};
        script().onWindow("frmParent", [&](User& user) {
            stage.faults() = {};
            user.type("txt", "螺丝", 0);
            user.type("txt", "09", 1);
            user.answer(MessageKind::critical, "类型不匹配");
            user.answer(MessageKind::critical, second);
            user.click("cmdOperate");
            closeDB();
        });
        list.answer(MessageKind::critical, kFault);
        list.click("MenuParentEditUpdate");
    });
    EXPECT_EQ(stage.items(), before);
}

TEST_F(CategoryMove, aClassWithoutATableFailsAndIsRolledBack) {
    appState().gItemTable = "tblGone";
    const Rows before = stage.items();
    script().answer(MessageKind::critical, "对象名 'tblGone' 无效。", Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "09", "02.09", "14"}));
    EXPECT_EQ(stage.items(), before);
}

TEST_F(CategoryMove, withoutADatabaseNothingIsRolledBack) {
    stage.faults().count = 0;
    stage.faults().failAt = 1;
    script().answer(MessageKind::critical, kFault, Answer::ok);
    EXPECT_FALSE(change(13, {"螺丝", "09", "02.09", "14"}));
    stage.faults().failAt = 0;
}

}  // namespace
}  // namespace orvenmod::test
