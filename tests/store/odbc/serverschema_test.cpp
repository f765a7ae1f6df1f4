// The suite's schema on a real server.
#include <gtest/gtest.h>

#include <numeric>

#include "store/schema.h"
#include "store/schema/columns.h"
#include "store/upgrade.h"
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
        connection_ = database->connect();
    }

    std::string value(const std::string& sql) {
        const store::Recordset rows = connection_->open(sql);
        return rows.eof() ? "no row" : std::string(rows.cell(0, 0).value_or("NULL"));
    }

    std::unique_ptr<store::Connection> connection_;
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

}  // namespace
}  // namespace orvenmod::test
