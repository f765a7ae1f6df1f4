// A host's own statements on the suite's database.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <orvenmod/schema.h>
#include <orvenmod/statements.h>

#include "support/database.h"

namespace orvenmod {
namespace {

using testing::ElementsAre;

class HostStatements : public testing::Test {
protected:
    int failureOf(const std::string& sql) {
        try {
            statements_.execute(sql);
        } catch (const StatementFailure& failure) {
            EXPECT_STRNE(failure.what(), "");
            return failure.number();
        }
        return 0;
    }
    std::string value(const std::string& sql) { return statements_.open(sql).text("v"); }

    test::Database database_;
    Statements statements_{database_.connectionString()};
};

TEST_F(HostStatements, changeAndReadTheSuitesTables) {
    EXPECT_EQ(statements_.execute("insert into tblMaxNum(fTableName,fMaxNum) values('a',1)"), 1);
    EXPECT_EQ(statements_.execute("insert into tblMaxNum(fTableName,fMaxNum) values('b',null)"), 1);
    Rows rows = statements_.open("select fTableName,fMaxNum from tblMaxNum where fTableName in ('A','B') order by 1");
    EXPECT_EQ(rows.count(), 2U);
    EXPECT_THAT(rows.columns(), ElementsAre("fTableName", "fMaxNum"));
    EXPECT_EQ(rows.text("FTABLENAME"), "a");
    EXPECT_FALSE(rows.isNull("fMaxNum"));
    rows.moveNext();
    EXPECT_TRUE(rows.isNull("fMaxNum"));
    EXPECT_EQ(rows.text("fMaxNum", "none"), "none");
    rows.moveNext();
    EXPECT_TRUE(rows.eof());
}

TEST_F(HostStatements, areOfTheSystemsDialect) {
    EXPECT_EQ(value("select top 1 isnull(null,'x')+cast(7/2 as varchar(10)) as v from tblItemClass"), "x3");
}

TEST_F(HostStatements, failWithTheNumberThatAServerGives) {
    EXPECT_EQ(failureOf("delete from tblNowhere"), 208);
    EXPECT_EQ(failureOf("update tblMaxNum set fMaxNum='x'"), 245);
    EXPECT_EQ(failureOf("delete from tblMaxNum; delete from tblItem"), 102) << "one statement a call";
    const Rows rows = statements_.open("select fTableName from tblMaxNum where 1=0");
    EXPECT_THROW(rows.text("fTableName"), StatementFailure);
    EXPECT_THROW(rows.isNull("nowhere"), StatementFailure);
}

TEST_F(HostStatements, standWholeOrNotAtAllInATransaction) {
    const std::string count = "select count(*) as v from tblMaxNum where fTableName='c'";
    statements_.beginTrans();
    EXPECT_TRUE(statements_.inTransaction());
    statements_.execute("insert into tblMaxNum(fTableName,fMaxNum) values('c',1)");
    statements_.rollbackTrans();
    EXPECT_EQ(value(count), "0");
    statements_.beginTrans();
    statements_.execute("insert into tblMaxNum(fTableName,fMaxNum) values('c',1)");
    statements_.commitTrans();
    EXPECT_EQ(value(count), "1");
    {
        Statements left(database_.connectionString());
        left.beginTrans();
        left.execute("delete from tblMaxNum");
    }
    EXPECT_EQ(value(count), "1") << "what wasn't committed is undone";
}

TEST_F(HostStatements, rowsOutliveTheirConnection) {
    auto other = std::make_unique<Statements>(database_.connectionString());
    const Rows rows = other->open("select 5 as v");
    other.reset();
    EXPECT_EQ(rows.text("v"), "5");
}

TEST(HostStatementsOnNothing, tellThatNoStoreIsNamed) {
    EXPECT_THROW(Statements("Data Source=x"), StatementFailure);
    EXPECT_THROW(Statements("Provider=SQLite;Data Source=/nowhere/none.db"), StatementFailure);
}

TEST(SchemaViewText, isTheStatementThatMakesTheView) {
    EXPECT_EQ(SchemaViewText("vICItem").rfind("create view", 0), 0U);
    EXPECT_THROW(SchemaViewText("vNowhere"), std::invalid_argument);
}

}  // namespace
}  // namespace orvenmod
