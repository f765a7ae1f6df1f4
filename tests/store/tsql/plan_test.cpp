// That the statements the system sends are served by indexes, as SQLite plans them.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "store/sqlite/databasefile.h"
#include "store/sqlite/functions.h"
#include "store/sqlite/sqlitecatalog.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {
namespace {

class Plan : public ::testing::Test {
protected:
    Plan() {
        EXPECT_EQ(sqlite3_open(":memory:", &database_), SQLITE_OK);
        sqlite::registerFunctions(database_, runtime_);
        catalog_.attach(database_, file_);
        run("create table tblItem(fItemId int primary key,fNumber varchar(100),fName varchar(100),fParentId int,"
            "fNBNumber varchar(200),fItemClassId int)");
        run("create index number on tblItem(fItemClassId,fNumber)");
        run("create index path on tblItem(fNBNumber)");
        run("create table ICItem(fitemid int,fnumber varchar(100),fname varchar(100))");
        run("create view vICItem as select a.fItemid,b.fNBNumber,isnull(a.fnumber,'') as fNumber from ICItem as a "
            "left join tblItem as b on a.fitemid=b.fitemid");
    }
    ~Plan() override {
        catalog_.detach();
        sqlite3_close(database_);
    }

    void run(const std::string& sql) {
        for (const std::string& statement : translate(sql)) {
            char* error = nullptr;
            EXPECT_EQ(sqlite3_exec(database_, statement.c_str(), nullptr, nullptr, &error), SQLITE_OK)
                << statement << ": " << error;
        }
    }

    std::vector<std::string> translate(const std::string& sql) {
        catalog_.refresh();
        return translateForSqlite(sql, catalog_).statements;
    }

    std::string planOf(const std::string& sql) {
        std::string plan;
        const std::string explain = "EXPLAIN QUERY PLAN " + translate(sql).at(0);
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database_, explain.c_str(), -1, &statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database_);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            plan += reinterpret_cast<const char*>(sqlite3_column_text(statement, 3));
            plan += '\n';
        }
        sqlite3_finalize(statement);
        return plan;
    }

    sqlite3* database_ = nullptr;
    sqlite::Runtime runtime_;
    sqlite::DatabaseFile file_{.path = ":memory:"};
    sqlite::SqliteCatalog catalog_;
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
