// The suite's schema on a real server.
#include <gtest/gtest.h>

#include <numeric>

#include "store/fault.h"
#include "store/odbc/odbcstore.h"
#include "store/schema.h"
#include "store/schema/columns.h"
#include "store/upgrade.h"
#include "support/rows.h"
#include "support/tdsserver.h"

namespace orvenmod::test {
namespace {

class ServerSchema : public ::testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        const TdsDatabase* database = TdsDatabase::get(reason);
        if (database == nullptr) GTEST_SKIP() << reason;
        database->clear();
        connectionString_ = database->connectionString();
        connection_ = database->connect();
    }

    std::string value(const std::string& sql) {
        const store::Recordset rows = connection_->open(sql);
        return rows.eof() ? "no row" : std::string(rows.cell(0, 0).value_or("NULL"));
    }

    /// The columns of the indexes that the steps make.
    Rows indexesOfItems() {
        return rowsOf(*connection_,
                      "select i.name,c.key_ordinal,c.column_id from sys.indexes i inner join sys.index_columns c "
                      "on c.object_id=i.object_id and c.index_id=i.index_id where i.object_id=object_id('tblItem') "
                      "order by i.name,c.key_ordinal,c.column_id");
    }
    /// A database of the first version, with indexes that served it worse.
    void makeOldDatabase() {
        store::createSchema(*connection_);
        newIndexes_ = indexesOfItems();
        for (const std::string name : {"ix_tblItem_2", "ix_tblItem_4", "ix_tblItem_5"}) {
            connection_->execute("drop index tblItem." + name);
            connection_->execute("create index " + name + " on tblItem(fDepth,fNumber)");
        }
        connection_->execute("drop table tblOrvenmodVersion");
        connection_->execute("insert into tblItem(fItemId,fNumber) values(1,'01')");
    }
    void expectUpgraded() {
        EXPECT_FALSE(connection_->inTransaction());
        EXPECT_EQ(store::schemaVersion(*connection_), store::newestSchemaVersion());
        EXPECT_EQ(indexesOfItems(), newIndexes_);
        EXPECT_EQ(value("select count(*) from tblOrvenmodVersion"), "1");
        EXPECT_EQ(value("select fNumber from tblItem"), "01");
    }

    std::string connectionString_;
    std::unique_ptr<store::Connection> connection_;
    Rows newIndexes_;
};

TEST_F(ServerSchema, HasEveryTableColumnViewAndIndex) {
    store::createSchema(*connection_);
    std::size_t indexes = 0;
    for (const store::SchemaTable& table : store::schemaTables()) {
        const store::Recordset rows = connection_->open("select * from " + std::string(table.name) + " where 1=0");
        ASSERT_EQ(static_cast<std::size_t>(rows.columnCount()), table.columns.size()) << table.name;
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            EXPECT_EQ(rows.columns()[i].name, table.columns[i].name);
        indexes += table.indexes.size() + (table.primaryKey.empty() ? 0 : 1);
    }
    for (const ExpectedTable& table : expectedTables())
        EXPECT_NO_THROW(connection_->open("select " + table.columns + " from " + table.name)) << table.name;
    EXPECT_EQ(value("select count(*) from sysobjects where xtype='U'"), std::to_string(store::schemaTables().size()));
    EXPECT_EQ(value("select count(*) from sysobjects where xtype='V'"), std::to_string(store::schemaViews().size()));
    EXPECT_EQ(value("select count(*) from sys.indexes i inner join sysobjects o on o.id=i.object_id where o.xtype='U' "
                    "and i.type>0"),
              std::to_string(indexes));
    EXPECT_EQ(value("select count(*) from tblItemClass"), "4");
    EXPECT_EQ(value("select fName from tblSystemPrivillenge where fNumber='Y3'"), "货品");
}

TEST_F(ServerSchema, IsRefusedASecondTimeAndLeavesTheDatabaseAsItWas) {
    store::createSchema(*connection_);
    connection_->execute("insert into tblItem(fItemId,fNumber) values(1,'01')");
    try {
        store::createSchema(*connection_);
        ADD_FAILURE() << "no failure";
    } catch (const store::Failure& failure) {
        EXPECT_EQ(failure.kind(), store::FailureKind::duplicate) << failure.text();
    }
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(value("select count(*) from tblItem"), "1");
    EXPECT_EQ(value("select count(*) from tblItemClass"), "4");
}

TEST_F(ServerSchema, NeedsNoUpgradeWhenItIsNew) {
    store::createSchema(*connection_);
    const std::string version = value("select max(fVersion) from tblOrvenmodVersion");
    store::upgradeSchema(*connection_);
    EXPECT_EQ(value("select max(fVersion) from tblOrvenmodVersion"), version);
}

TEST_F(ServerSchema, OfTheFirstVersionIsUpgraded) {
    makeOldDatabase();
    EXPECT_EQ(store::schemaVersion(*connection_), 0);
    EXPECT_NE(indexesOfItems(), newIndexes_);
    store::upgradeSchema(*connection_);
    expectUpgraded();
}

TEST_F(ServerSchema, IsUpgradedWhereIndexesAreMissing) {
    makeOldDatabase();
    connection_->execute("drop index tblItem.ix_tblItem_2");
    connection_->execute("drop index tblItem.ix_tblItem_5");
    store::upgradeSchema(*connection_);
    expectUpgraded();
}

TEST_F(ServerSchema, IsUpgradedWhereSomebodyMadeTheTableOfTheVersion) {
    makeOldDatabase();
    connection_->execute("create table tblOrvenmodVersion(fVersion int not null)");
    connection_->execute("drop index tblItem.ix_tblItem_4");
    store::upgradeSchema(*connection_);
    expectUpgraded();
}

TEST_F(ServerSchema, StaysAsItWasWhicheverOperationOfAnUpgradeFails) {
    makeOldDatabase();
    const Rows before = indexesOfItems();
    store::FaultPlan plan;
    store::odbc::OdbcStore store;
    store::FaultyStore faulty(store, plan);
    do {
        plan.count = 0;
        ++plan.failAt;
        try {
            store::upgradeSchema(*faulty.connect(connectionString_));
            EXPECT_LT(plan.count, plan.failAt) << "operation " << plan.failAt << " failed unnoticed";
        } catch (const store::Failure& failure) {
            EXPECT_EQ(failure.text(), plan.text) << plan.failAt;
            EXPECT_EQ(indexesOfItems(), before) << plan.failAt;
            EXPECT_EQ(store::schemaVersion(*connection_), 0) << plan.failAt;
        }
    } while (plan.count >= plan.failAt);
    expectUpgraded();
}

TEST_F(ServerSchema, StaysAsItWasWhereAStepIsRefused) {
    makeOldDatabase();
    // The last step has no column to carry along, and no index to drop.
    connection_->execute("drop index tblItem.ix_tblItem_4");
    for (const auto& row : rowsOf(*connection_, "select name from sysobjects where xtype='V'"))
        connection_->execute("drop view " + row.at(0));
    connection_->execute("alter table tblItem drop column fShortNumber");
    const Rows before = indexesOfItems();
    try {
        store::upgradeSchema(*connection_);
        ADD_FAILURE() << "no failure";
    } catch (const store::Failure& failure) {
        EXPECT_NE(failure.text().find("fshortnumber"), std::string::npos) << failure.text();
    }
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(indexesOfItems(), before);
    EXPECT_EQ(store::schemaVersion(*connection_), 0);
}

}  // namespace
}  // namespace orvenmod::test
