// Which bills use an item: the statements, the numbers, and what is left where the store fails.
#include "hierarchy/itemusage.h"

#include <map>

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

    /// Columns fRef1 ... of a table of orders, each named by both kinds of order.
    void catalogueColumns(const std::string& catalogue, const std::string& table, int columns) {
        for (int i = ++columnsOf_[table]; i <= columns; i = ++columnsOf_[table]) {
            const std::string name = "fRef" + std::to_string(i);
            database().execute("alter table " + table + " add " + name + " int null");
            for (const char* type : {"31", "32"})
                database().execute("insert into " + catalogue + "(fTypeId,fFieldName,fFieldType) values(" + type +
                                   ",'" + name + "',1)");
        }
        columnsOf_[table] = columns;
    }

private:
    std::map<std::string, int> columnsOf_;
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
        "select 1 as fkind,count(distinct finterid) as fvalue from ( select finterid from icstockbill  where "
        "fCustId=101 union all select finterid from icstockbillEntry where fItemId=101) as t union all select 2 as "
        "fkind,finterid as fvalue from (select distinct top 10 finterid from ( select finterid from icstockbill  "
        "where fCustId=101 union all select finterid from icstockbillEntry where fItemId=101) as b order by finterid "
        "desc) as t union all "
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

TEST_F(ItemUsage, asksForAColumnThatSeveralBillTypesNameOnce) {
    stage.catalogueOneFieldAFamily();
    for (const char* type : {"2", "3", "-4"})
        database().execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                           ",'fCustId',1)");
    for (const char* type : {"1", "2", "3"})
        database().execute(std::string("insert into tblbillinfoentry(fTypeId,fFieldName,fFieldType) values(") + type +
                           ",'fItemId',1)");
    database().execute("insert into icstockbill(fInterId,fCustId) values(5,101)");
    const auto usage = usageOf(101);
    EXPECT_EQ(usage[0].bills, "1");
    EXPECT_EQ(usage[0].latest, Texts{"5"});
    const auto timesAsked = [&](const std::string& column) {
        const std::string text = stage.statements().at(1);
        std::size_t found = 0;
        for (auto at = text.find(column); at != std::string::npos; at = text.find(column, at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(timesAsked(" where fCustId=101"), 2U) << "once for the number and once for the latest";
    EXPECT_EQ(timesAsked(" where fItemId=101"), 2U);
}

TEST_F(ItemUsage, readsAFamilyOfAnyNumberOfColumns) {
    for (const int columns : {20, 60, 110}) {
        catalogueColumns("tblBillInfo", "icorderbill", columns);
        catalogueColumns("tblbillinfoentry", "icorderbillentry", columns);
        const std::string last = "fRef" + std::to_string(columns);
        database().execute("delete from icorderbill");
        database().execute("delete from icorderbillentry");
        for (int bill = 1; bill <= 12; ++bill)
            database().execute("insert into icorderbill(fInterId,fRef1," + last + ") values(" + std::to_string(bill) +
                               ",101,101)");
        database().execute("insert into icorderbillentry(fInterId," + last + ") values(12,101)");
        database().execute("insert into icorderbillentry(fInterId," + last + ") values(13,101)");
        database().execute("insert into icorderbillentry(fInterId," + last + ") values(14,102)");
        const auto usage = usageOf(101);
        EXPECT_EQ(usage[1].bills, "13") << columns;
        EXPECT_EQ(usage[1].latest, (Texts{"13", "12", "11", "10", "9", "8", "7", "6", "5", "4"})) << columns;
    }
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
