// Which bills use an item: the statements, the numbers, and what is left where the store fails.
#include "hierarchy/itemusage.h"

#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/frmItemUsage.h"
#include "hierarchy/hierarchytest.h"

namespace orvenmod::test {
namespace {

class ItemUsage : public HierarchyTest {
protected:
    std::vector<FamilyUsage> usageOf(int id) {
        openDB();
        stage.forgetStatements();
        const auto usage = itemUsage(id);
        closeDB();
        return usage;
    }
};

TEST_F(ItemUsage, asksOnceForTheColumnsAndOnceAFamily) {
    stage.catalogueOneFieldAFamily();
    database().execute("insert into tblbillinfoentry(fTypeId,fFieldName,fFieldType) values(1,'fItemId',1)");
    usageOf(101);
    const Texts sent = stage.statements();
    ASSERT_EQ(sent.size(), 7U);
    EXPECT_EQ(
        sent[0],
        "select fFieldName,1 as fType,ftypeid from tblBillInfo where fFieldType=1 union all select fFieldName,2 as "
        "fType,ftypeid from tblbillinfoentry where fFieldType=1");
    EXPECT_EQ(
        sent[1],
        "select 1 as fkind,count(finterid) as fvalue from ( select finterid from icstockbill  where fCustId=101 "
        "union select finterid from icstockbillEntry where fItemId=101) as t union all select 2 as fkind,finterid "
        "as fvalue from (select top 10 finterid from ( select finterid from icstockbill  where fCustId=101 union "
        "select finterid from icstockbillEntry where fItemId=101) as b order by finterid desc) as t union all "
        "select 3 as fkind,finterid as fvalue from (select top 1 fitemid as finterid from tblstockbal where "
        "fitemid=101) as t");
}

TEST_F(ItemUsage, countsABillOnceHoweverOftenItUsesTheItem) {
    stage.catalogueOneFieldAFamily();
    database().execute("insert into tblbillinfoentry(fTypeId,fFieldName,fFieldType) values(31,'fItemId',1)");
    for (const char* row : {"(8,101)", "(8,101)", "(9,101)", "(10,102)"})
        database().execute(std::string("insert into icorderbillentry(fInterId,fItemId) values") + row);
    database().execute("insert into icorderbill(fInterId,fCustId) values(9,101)");
    const auto usage = usageOf(101);
    ASSERT_EQ(usage.size(), 6U);
    EXPECT_EQ(usage[1].family, "订单");
    EXPECT_EQ(usage[1].bills, "2");
    EXPECT_EQ(usage[1].latest, (Texts{"9", "8"}));
    EXPECT_EQ(usage[0].bills, "0");
    EXPECT_EQ(usage[0].latest, Texts{});
}

TEST_F(ItemUsage, tellsBalancesWhereNoColumnIsCatalogued) {
    database().execute("insert into tblstockbal(fItemId) values(101)");
    database().execute("insert into tblcustbal(fCustId) values(102)");
    EXPECT_TRUE(usageOf(101)[0].balance);
    EXPECT_FALSE(usageOf(101)[3].balance);
    EXPECT_TRUE(usageOf(102)[3].balance);
    EXPECT_EQ(stage.statements().size(), 3U) << "a family without columns and balances is asked nothing";
}

TEST_F(ItemUsage, aFailureOfTheStoreIsShownAndNoWindow) {
    stage.catalogueOneFieldAFamily();
    database().execute("update tblBillInfo set fFieldName='fNoSuch' where fTypeId=31");
    bool failed = false;
    try {
        usageOf(101);
    } catch (const store::Failure&) {
        failed = true;
        closeDB();
    }
    EXPECT_TRUE(failed);
    script().answer(MessageKind::critical, "列名 'fNoSuch' 无效。", Answer::ok);
    frmItemUsage(101).show();
    EXPECT_EQ(stage.operations().back(), "close");
}

}  // namespace
}  // namespace orvenmod::test
