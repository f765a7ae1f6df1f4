// The gate before the delete of a detail: its probes to the blank, the families' messages, what is deleted.
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/hierarchytest.h"
#include "hierarchy/itemroutines.h"

namespace orvenmod::test {
namespace {

class UsageGuard : public HierarchyTest {
protected:
    UsageGuard() {
        stage.catalogueOneFieldAFamily();
        for (const int type : {1, 31, 41, 61, 71})
            addField("tblbillinfoentry", type, "fItemId");
    }

    void addField(const std::string& catalogue, int type, const std::string& field, int kind = 1) {
        database().execute("insert into " + catalogue + "(fTypeId,fFieldName,fFieldType) values(" +
                           std::to_string(type) + ",'" + field + "'," + std::to_string(kind) + ")");
    }
    bool remove(int id) {
        appState().gCurItemId = id;
        stage.forgetStatements();
        return delDetail();
    }
    void expectRefused(int id, const std::string& refusal) {
        const Rows before = stage.items();
        script().answer(MessageKind::warning, refusal, Answer::ok);
        EXPECT_FALSE(remove(id));
        EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::warning, refusal, kTitle}));
        EXPECT_EQ(stage.items(), before);
        EXPECT_EQ(stage.operations().back(), "close");
    }
};

const std::string kStock = "该项目在库存单据中已经使用,不能删除!";
const std::string kMoney = "该项目在收付款单中已经使用,不能删除!";

TEST_F(UsageGuard, sendsItsProbesAndDeletesInOrder) {
    EXPECT_TRUE(remove(101));
    EXPECT_EQ(
        stage.statements(),
        (Texts{
            "select fislock,fname from tblItem where fitemid=101",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid<10  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and ftypeid<10  ",
            " select top 1 finterid from icstockbill  where fCustId=101 union all select top 1 finterid from "
            "icstockbillEntry where fItemId=101 union all select top 1 fitemid as finterid from tblstockbal where "
            "fitemid=101",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (31,32)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  ftypeid in (31,32)  ",
            " select top 1 finterid from icorderbill  where fCustId=101 union all select top 1 finterid from "
            "icorderbillentry where fItemId=101",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (41,42)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  ftypeid in (41,42)  ",
            " select top 1 finterid from icnoticebill  where fCustId=101 union all select top 1 finterid from "
            "icnoticebillEntry where fItemId=101",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (51,52) ",
            " select top 1 finterid from tblMoney  where fCustId=101 union all select top 1 fsupplyid as  finterid "
            "from "
            "tblSuppbal where fSupplyId=101 union all select top 1 fcustid as finterid from tblcustbal where "
            "fcustid=101",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (61,62)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  ftypeid in (61,62)  ",
            " select top 1 finterid from ICMoney  where fCustId=101 union all select top 1 finterid from ICMoneyEntry "
            "where fItemId=101",
            "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (71,72)  union all select "
            "fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  ftypeid in (71,72)  ",
            " select top 1 finterid from tblFP  where fCustId=101 union all select top 1 finterid from tblFPEntry "
            "where "
            "fItemId=101",
            "delete from tblItem where fitemid=101", "delete from ICItem  where fitemid=101",
            "delete from tblItemFJ where fitemid=101"}));
    const Texts all = stage.operations();
    EXPECT_EQ((Texts{all.end() - 6, all.end()}), (Texts{"begin", "execute", "execute", "execute", "commit", "close"}));
}

TEST_F(UsageGuard, aSecondFieldOfAFamilyIsChained) {
    addField("tblBillInfo", 32, "fSupplyId");
    EXPECT_TRUE(remove(101));
    EXPECT_EQ(
        stage.statements()[4],
        " select top 1 finterid from icorderbill  where fCustId=101 union all select top 1 finterid from "
        "icorderbill  where fSupplyId=101 union all select top 1 finterid from icorderbillentry where fItemId=101");
}

TEST_F(UsageGuard, anEntryFieldAloneIsTheFirstProbe) {
    database().execute("delete from tblBillInfo where fTypeId=71");
    EXPECT_TRUE(remove(101));
    EXPECT_EQ(stage.statements()[12], " select top 1 finterid from tblFPEntry where fItemId=101");
}

TEST_F(UsageGuard, withoutStockFieldsTheStockBalanceIsProbedAlone) {
    database().execute("delete from tblBillInfo where fTypeId=1");
    database().execute("delete from tblbillinfoentry where fTypeId=1");
    EXPECT_TRUE(remove(101));
    EXPECT_EQ(stage.statements()[2], "  select top 1 fitemid as finterid from tblstockbal where fitemid=101");
}

TEST_F(UsageGuard, withoutMoneyFieldsThePartnerBalancesAreProbedAlone) {
    database().execute("delete from tblBillInfo where fTypeId=51");
    EXPECT_TRUE(remove(101));
    EXPECT_EQ(
        stage.statements()[8],
        "  select top 1 fsupplyid as  finterid from tblSuppbal where fSupplyId=101 union all select top 1 fcustid "
        "as  finterid from tblcustbal where fcustid=101");
}

TEST_F(UsageGuard, fieldsOfDictionaryEntriesAreNotProbed) {
    addField("tblBillInfo", 2, "fStockId", 2);
    database().execute("insert into icstockbill(fInterId,fStockId) values(1,101)");
    EXPECT_TRUE(remove(101));
}

TEST_F(UsageGuard, deletesTheItemItsClassRowAndItsAttachmentsAndLeavesThePhoto) {
    database().execute("insert into tblItemFJ(fItemId,fEntryId,fName) values(101,1,'图纸')");
    database().execute("insert into ICItemPhoto(fItemId,fHZ) values(101,'.png')");
    EXPECT_TRUE(remove(101));
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fitemid=101"), "0");
    EXPECT_EQ(database().value("select count(*) as n from ICItem where fitemid=101"), "0");
    EXPECT_EQ(database().value("select count(*) as n from tblItemFJ where fitemid=101"), "0");
    EXPECT_EQ(database().value("select count(*) as n from ICItemPhoto where fitemid=101"), "1");
    EXPECT_EQ(database().value("select count(*) as n from ICItem"), "3");
}

struct Use {
    const char* table;
    const char* column;
    const char* refusal;
};

class UsageGuardFamily : public UsageGuard, public testing::WithParamInterface<Use> {};

TEST_P(UsageGuardFamily, aHitIsToldByItsFamily) {
    const Use& use = GetParam();
    database().execute(std::string("insert into ") + use.table + "(fInterId," + use.column + ") values(1,101)");
    expectRefused(101, use.refusal);
}

INSTANTIATE_TEST_SUITE_P(Bills, UsageGuardFamily,
                         testing::Values(Use{"icstockbill", "fCustId", "该项目在库存单据中已经使用,不能删除!"},
                                         Use{"icstockbillEntry", "fItemId", "该项目在库存单据中已经使用,不能删除!"},
                                         Use{"icorderbill", "fCustId", "该项目在订单中已经使用,不能删除!"},
                                         Use{"icorderbillentry", "fItemId", "该项目在订单中已经使用,不能删除!"},
                                         Use{"icnoticebill", "fCustId", "该项目在通知单中已经使用,不能删除!"},
                                         Use{"icnoticebillEntry", "fItemId", "该项目在通知单中已经使用,不能删除!"},
                                         Use{"tblMoney", "fCustId", "该项目在收付款单中已经使用,不能删除!"},
                                         Use{"ICMoney", "fCustId", "该项目在收入支出单据中已经使用,不能删除!"},
                                         Use{"ICMoneyEntry", "fItemId", "该项目在收入支出单据中已经使用,不能删除!"},
                                         Use{"tblFP", "fCustId", "该项目在发票中已经使用,不能删除!"},
                                         Use{"tblFPEntry", "fItemId", "该项目在发票中已经使用,不能删除!"}),
                         [](const testing::TestParamInfo<Use>& each) { return std::string("in_") + each.param.table; });

TEST_F(UsageGuard, theFirstFamilyWithAHitEndsTheGuard) {
    database().execute("insert into icstockbillEntry(fInterId,fItemId) values(1,101)");
    database().execute("insert into tblFP(fInterId,fCustId) values(1,101)");
    expectRefused(101, kStock);
    EXPECT_EQ(stage.statements().size(), 3U);
}

TEST_F(UsageGuard, aStockBalanceIsToldAsAStockBill) {
    database().execute("insert into tblstockbal(fItemId) values(101)");
    expectRefused(101, kStock);
}

TEST_F(UsageGuard, aSuppliersBalanceIsToldAsAMoneyBill) {
    database().execute("insert into tblSuppbal(fSupplyId) values(101)");
    expectRefused(101, kMoney);
}

TEST_F(UsageGuard, aCustomersBalanceIsToldAsAMoneyBillWhateverTheClass) {
    database().execute("insert into tblcustbal(fCustId) values(101)");
    expectRefused(101, kMoney);
}

TEST_F(UsageGuard, aDisabledItemIsRefusedByNameBeforeAnyBillIsLookedAt) {
    database().execute("update tblItem set fIsLock=1 where fItemId=101");
    database().execute("insert into icstockbillEntry(fInterId,fItemId) values(1,101)");
    expectRefused(101, "内六角螺丝已经禁用,不能删除!");
    EXPECT_EQ(stage.statements().size(), 1U);
}

TEST_F(UsageGuard, anItemWithoutALockStateIsNotDisabled) {
    database().execute("update tblItem set fIsLock=null where fItemId=101");
    EXPECT_TRUE(remove(101));
}

TEST_F(UsageGuard, anIdThatIsGonePassesAndDeletesNothing) {
    const Rows before = stage.items();
    EXPECT_TRUE(remove(4711));
    EXPECT_EQ(stage.items(), before);
}

TEST_F(UsageGuard, aFieldAddedToTheCatalogueIsGuardedAtOnce) {
    database().execute("insert into icnoticebill(fInterId,fAccountId) values(1,101)");
    addField("tblBillInfo", 42, "fAccountId");
    expectRefused(101, "该项目在通知单中已经使用,不能删除!");
}

// A failure among the probes finds no transaction, so that the rollback fails as well.
class UsageGuardFailure : public UsageGuard {
protected:
    void expectFailure(const std::string& first) {
        const Rows before = stage.items();
        const std::string second = rollbackFailure(stage);
        stage.open([&](User& user) {
            user.selectRow("vsf1", 1);
            user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
            user.answer(MessageKind::critical, first);
            user.answer(MessageKind::critical, second);
            user.click("MenuEditDelete");
            EXPECT_TRUE(appState().gConn != nullptr);
            EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), 5);
        });
        closeDB();
        EXPECT_EQ(stage.items(), before);
    }
};

class UnguardedFamily : public UsageGuardFailure, public testing::WithParamInterface<int> {};

TEST_P(UnguardedFamily, aCatalogueWithoutAFieldOfItFails) {
    const std::string type = std::to_string(GetParam());
    database().execute("delete from tblBillInfo where fTypeId=" + type);
    database().execute("delete from tblbillinfoentry where fTypeId=" + type);
    expectFailure("'' 附近有语法错误。");
}

INSTANTIATE_TEST_SUITE_P(Bills, UnguardedFamily, testing::Values(31, 41, 61, 71));

TEST_F(UsageGuardFailure, anEmptyCatalogueFails) {
    database().execute("delete from tblBillInfo");
    database().execute("delete from tblbillinfoentry");
    expectFailure("'' 附近有语法错误。");
}

TEST_F(UsageGuardFailure, aFieldWhoseNameHoldsAQuoteFails) {
    // Of two fields of one bill either may come first.
    database().execute("delete from tblBillInfo where fTypeId=71");
    addField("tblBillInfo", 71, "f''Id");
    expectFailure("字符串 'Id=101 union all select top 1 finterid from tblFPEntry where fItemId=101' 后的引号不完整。");
}

TEST_F(UsageGuardFailure, aFieldThatTheBillHasNotFails) {
    addField("tblBillInfo", 71, "fGoneId");
    expectFailure("列名 'fGoneId' 无效。");
}

TEST_F(UsageGuardFailure, aBillTableThatIsGoneFails) {
    database().execute("drop table tblFPEntry");
    expectFailure("对象名 'tblFPEntry' 无效。");
}

TEST_F(UsageGuard, aClassTableThatIsGoneIsRolledBack) {
    appState().gItemTable = "tblGone";
    const Rows before = stage.items();
    script().answer(MessageKind::critical, "对象名 'tblGone' 无效。", Answer::ok);
    EXPECT_FALSE(remove(101));
    EXPECT_EQ(stage.items(), before);
    EXPECT_FALSE(appState().gConn);
}

}  // namespace
}  // namespace orvenmod::test
