// That the statements the system sends are served by indexes, as SQLite plans them.
#include <gtest/gtest.h>

#include "plannedtables.h"

namespace orvenmod::store::tsql {
namespace {

class Plan : public PlannedTables {
protected:
    Plan() {
        run("create table tblItem(fItemId int primary key,fNumber varchar(100),fName varchar(100),fParentId int,"
            "fNBNumber varchar(200),fItemClassId int)");
        run("create index number on tblItem(fItemClassId,fNumber)");
        run("create index path on tblItem(fNBNumber)");
        run("create table ICItem(fitemid int,fnumber varchar(100),fname varchar(100))");
        run("create view vICItem as select a.fItemid,b.fNBNumber,isnull(a.fnumber,'') as fNumber from ICItem as a "
            "left join tblItem as b on a.fitemid=b.fitemid");
    }

    std::string planOf(const std::string& sql) { return nativePlan(translate(sql).at(0)); }
};

TEST_F(Plan, FindsAnItemByClassAndCodeThroughTheIndex) {
    EXPECT_NE(planOf("select * from tblItem where fnumber='01.001' and fitemclassid=3")
                  .find("USING INDEX tblItem.number (fItemClassId=? AND <expr>=?)"),
              std::string::npos);
}

TEST_F(Plan, FindsTheItemsOfANodeThroughThePath) {
    EXPECT_NE(planOf("select fitemid from tblItem where fNBNumber like '.12.%'")
                  .find("USING INDEX tblItem.path (<expr>>? AND <expr><?)"),
              std::string::npos);
}

TEST_F(Plan, BoundsWideDecimalsByTheIndexOfTheirColumn) {
    run("create table goods(id int,price decimal(18,4))");
    run("create index price on goods(price)");
    EXPECT_NE(planOf("select id from goods where price=5.5").find("goods.price (price=?)"), std::string::npos);
    EXPECT_NE(planOf("select id from goods where price>5.5").find("goods.price (price>?)"), std::string::npos);
    EXPECT_NE(planOf("select id from goods where price<=5.5").find("goods.price (price<?)"), std::string::npos);
    EXPECT_NE(planOf("select id from goods where price between 1 and 5.5").find("goods.price (price>?"),
              std::string::npos);
}

TEST_F(Plan, FindsTheRowsOfAViewThroughTheJoinedTablesPath) {
    const std::string plan = planOf("select fitemid from vICItem where 1=1 and fNBNumber like '.12.%'");
    EXPECT_NE(plan.find("USING INDEX tblItem.path"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("SCAN"), std::string::npos) << plan;
}

TEST_F(Plan, NeverScansForAnId) {
    for (const char* sql : {"select * from vICItem where fitemid=5", "update ICItem set fname='x' where fitemid=5",
                            "delete from ICItem where fitemid=5", "delete from tblItem where fitemid=5"}) {
        const std::string plan = planOf(sql);
        EXPECT_EQ(plan.find("SCAN"), std::string::npos) << sql << "\n" << plan;
    }
}

}  // namespace
}  // namespace orvenmod::store::tsql
