// The delete of an entry: the gate in front of it, and what it leaves in the list.
#include "dictionary/deljczl.h"
#include "dictionary/dictionarytest.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::ListGrid;

class EntryDelete : public DictionaryTest {
protected:
    bool remove(int id) {
        appState().gCurItemId = id;
        stage.forgetStatements();
        return delJCZL();
    }
    void expectRefused(int id, const std::string& refusal) {
        const Rows before = stage.entries();
        script().answer(MessageKind::warning, refusal, Answer::ok);
        EXPECT_FALSE(remove(id));
        EXPECT_EQ(script().messages().back().title, kTitle);
        EXPECT_EQ(stage.entries(), before);
        EXPECT_FALSE(appState().gConn);
    }
    void deleteRow(User& user, int row) {
        user.selectRow("vsf1", row);
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, kDeleted);
        user.click("cmd", 3);
    }
};

TEST_F(EntryDelete, sendsItsProbesAndOneDeleteWithoutATransaction) {
    database().execute("insert into tblbillinfoentry(fTypeId,fFieldName,fFieldType) values(2,'fUnitId',2)");
    EXPECT_TRUE(remove(2));
    EXPECT_EQ(
        stage.statements(),
        (Texts{
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=2 and ftypeid<10  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=2 and ftypeid<10  ",
            " select top 1 finterid from icstockbill  where fSettleId=2 union all select top 1 finterid from "
            "icstockbillEntry where fUnitId=2",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=2 and ftypeid in (31,32)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=2 and  ftypeid in (31,32)  ",
            " select top 1 finterid from icorderbill  where fSettleId=2",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=2 and ftypeid in (41,42)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=2 and  ftypeid in (41,42)  ",
            " select top 1 finterid from icnoticebill  where fSettleId=2",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=2 and ftypeid in (51,52) ",
            " select top 1 finterid from tblMoney  where fSettleId=2 union all select top 1 fsupplyid as  finterid "
            "from tblSuppbal where fSupplyId=2 union all select top 1 fcustid as finterid from tblcustbal where "
            "fcustid=2",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=2 and ftypeid in (61,62)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=2 and  ftypeid in (61,62)  ",
            " select top 1 finterid from ICMoney  where fSettleId=2",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=2 and ftypeid in (71,72)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=2 and  ftypeid in (71,72)  ",
            " select top 1 finterid from tblFP  where fSettleId=2", "delete from tblSubType where fitemid=2"}));
    const Texts all = stage.operations();
    EXPECT_EQ((Texts{all.end() - 2, all.end()}), (Texts{"execute", "close"}));
    EXPECT_EQ(stage.entries().size(), 3U);
}

TEST_F(EntryDelete, withoutMoneyFieldsThePartnerBalancesAreProbedAlone) {
    database().execute("delete from tblBillInfo where fTypeId=51");
    EXPECT_TRUE(remove(2));
    EXPECT_EQ(
        stage.statements()[7],
        "  select top 1 fsupplyid as  finterid from tblSuppbal where fSupplyId=2 union all select top 1 fcustid as  "
        "finterid from tblcustbal where fcustid=2");
}

TEST_F(EntryDelete, anEntryOfABillStays) {
    database().execute("insert into icorderbill(fInterId,fSettleId) values(1,2)");
    expectRefused(2, "该项目在订单中已经使用,不能删除!");
}

TEST_F(EntryDelete, stockBalancesAreNotProbed) {
    database().execute("insert into tblstockbal(fItemId) values(2)");
    EXPECT_TRUE(remove(2));
}

TEST_F(EntryDelete, aPartnersBalanceUnderTheSameIdRefusesIt) {
    database().execute("insert into tblcustbal(fCustId) values(2)");
    expectRefused(2, "该项目在收付款单中已经使用,不能删除!");
}

class UnguardedFamily : public EntryDelete, public testing::WithParamInterface<int> {};

TEST_P(UnguardedFamily, aCatalogueWithoutAFieldOfItFailsInAWarning) {
    database().execute("delete from tblBillInfo where fTypeId=" + std::to_string(GetParam()));
    expectRefused(2, "'' 附近有语法错误。");
}

INSTANTIATE_TEST_SUITE_P(Bills, UnguardedFamily, testing::Values(1, 31, 41, 61, 71));

TEST_F(EntryDelete, aFieldThatTheBillHasNotFailsInAWarning) {
    database().execute("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(71,'fGoneId',2)");
    expectRefused(2, "列名 'fGoneId' 无效。");
}

TEST_F(EntryDelete, anEntryDeletedMeanwhilePasses) {
    stage.openList(501, 1, [this](User& user) {
        user.selectRow("vsf1", 1);
        database().execute("delete from tblSubType where fItemId=1");
        deleteRow(user, 1);
        EXPECT_EQ(listRows(user).size(), 2U);
    });
}

TEST_F(EntryDelete, noLeavesTheEntry) {
    stage.openList(501, 1, [this](User& user) {
        user.selectRow("vsf1", 1);
        stage.forgetStatements();
        user.answer(MessageKind::question, kAskDelete, Answer::no);
        user.click("cmd", 3);
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(EntryDelete, theRowThatTookItsPlaceIsMarked) {
    stage.openList(501, 1, [this](User& user) {
        deleteRow(user, 2);
        EXPECT_EQ(listRows(user), (Rows{{"1", "01", "个"}, {"3", "03", "吨"}}));
        EXPECT_TRUE(user.control<ListGrid>("vsf1").isSelected(2));
        EXPECT_FALSE(user.control<ListGrid>("vsf1").isSelected(1));
    });
}

TEST_F(EntryDelete, afterTheLastRowTheOneBeforeItIsMarked) {
    stage.openList(501, 1, [this](User& user) {
        deleteRow(user, 3);
        EXPECT_EQ(listRows(user).size(), 2U);
        EXPECT_TRUE(user.control<ListGrid>("vsf1").isSelected(2));
    });
}

TEST_F(EntryDelete, afterTheOnlyRowTheHeadingIsLeft) {
    stage.openList(502, 1, [this](User& user) {
        deleteRow(user, 1);
        EXPECT_EQ(user.control<ListGrid>("vsf1").rowCount(), 1);
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 0);
    });
}

TEST_F(EntryDelete, theManagerDeletesLikewise) {
    stage.openManager([this](User& user) {
        user.clickNode("tv1", "D501");
        user.selectRow("vsf1", 1);
        stage.forgetStatements();
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, kDeleted);
        user.chooseMenu("MenuDelJCZL");
        EXPECT_EQ(stage.lastStatement(), "delete from tblSubType where fitemid=1");
        EXPECT_EQ(listRows(user), (Rows{{"2", "02", "箱"}, {"3", "03", "吨"}}));
        EXPECT_TRUE(user.control<ListGrid>("vsf1").isSelected(1));
    });
}

TEST_F(EntryDelete, aRefusalLeavesTheRow) {
    database().execute("insert into tblcustbal(fCustId) values(2)");
    stage.openManager([](User& user) {
        user.clickNode("tv1", "D501");
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::warning, "该项目在收付款单中已经使用,不能删除!");
        user.chooseMenu("MenuDelJCZL");
        EXPECT_EQ(listRows(user).size(), 3U);
    });
}

}  // namespace
}  // namespace orvenmod::test
