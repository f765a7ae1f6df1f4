// A database of an earlier version. first_schema.sql is what the first version wrote, dumped by the sqlite3 shell.
#include "store/upgrade.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "store/connectionwrapper.h"
#include "store/fault.h"
#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"
#include "store/trace.h"
#include "support/database.h"
#include "support/dump.h"
#include "support/otherprocess.h"
#include "support/sourcefolder.h"

namespace orvenmod::test {
namespace {

using store::Connection;
using store::Failure;
using Texts = std::vector<std::string>;

std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/// A suite's database as the first version left it, with an item and its search text.
class Upgrade : public testing::Test {
protected:
    Upgrade() {
        sqlite3* made = nullptr;
        sqlite3_open(file().c_str(), &made);
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle(made, sqlite3_close);
        const std::string schema = contentsOf(sourceFile("tests/store/schema/first_schema.sql"));
        EXPECT_EQ(sqlite3_exec(made, schema.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(made);
        execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fShortNumber) "
            "values(5,'01','中性笔',3,0,1,'01')");
    }
    ~Upgrade() override { store::sqlite::SqliteStore::dropIdleHandles(); }

    std::string file() const { return folder_.file("suite.db"); }

    std::unique_ptr<Connection> connect(const std::string& more = "") {
        return tracing_.connect(connectionStringFor(file()) + more);
    }
    void execute(const std::string& sql) { connect()->execute(sql); }
    int version() { return store::schemaVersion(*connect()); }
    void upgrade(const std::string& more = "") {
        statements_.clear();
        store::upgradeSchema(*connect(more));
    }
    Failure refusal(const std::string& more = "") {
        try {
            upgrade(more);
        } catch (const Failure& failure) {
            return failure;
        }
        return {store::FailureKind::other, 0, "no failure"};
    }

    /// What the database holds, once nothing of it is left to an idle handle.
    std::string contents() {
        store::sqlite::SqliteStore::dropIdleHandles();
        return dumpOf(file());
    }
    /// The same without the rows that users write: tables, indexes, views and fixed rows.
    std::string shape() {
        execute("delete from tblItem");
        return contents();
    }
    /// The same without what databases that were there keep on purpose: the formats of two of the goods' list columns.
    std::string upgradedShape() {
        EXPECT_EQ(connect()->execute("update tblFindinfoEntry set fDataFormat='#,##0.00' "
                                     "where fTypeId=6003 and fFieldName in ('fD','fE') and fDataFormat='#,###.##'"),
                  2);
        return shape();
    }
    std::string shapeOfANewDatabase() {
        std::filesystem::remove(file());
        store::createSchema(*connect(";Mode=Create"));
        return shape();
    }
    void dropIndexesOfSteps() {
        std::set<std::string> drops;
        for (const store::UpgradeStep& step : store::upgradeSteps()) {
            for (const store::StepStatement& statement : step.statements) {
                if (statement.sql.starts_with("drop index")) drops.emplace(statement.sql);
            }
        }
        for (const std::string& drop : drops)
            execute(drop);
    }
    /// What was asked of the database within the last upgrade, in order.
    const Texts& statements() const { return statements_; }

    store::Store& store() { return tracing_; }

private:
    TemporaryFolder folder_;
    store::sqlite::SqliteStore store_;
    Texts statements_;
    store::TracingStore tracing_{store_, [this](const store::TraceRecord& record) {
                                     if (record.operation == "connect" || record.operation == "close") return;
                                     statements_.push_back(record.sql.empty() ? record.operation : record.sql);
                                 }};
};

TEST_F(Upgrade, giveADatabaseOfTheFirstVersionTheShapeOfANewOne) {
    EXPECT_EQ(version(), 0);
    upgrade();
    EXPECT_EQ(version(), store::newestSchemaVersion());
    const std::string upgraded = upgradedShape();
    EXPECT_EQ(upgraded, shapeOfANewDatabase());
}

TEST_F(Upgrade, leavesTheRowsAsTheyAre) {
    const auto rows = [this] {
        std::string all;
        for (const char* table : {"tblItem", "tblItemClass", "tblFindinfoEntry", "tblSystemPrivillenge"}) {
            const auto found = connect()->open(std::string("select * from ") + table);
            for (std::size_t row = 0; row < found.rowCount(); ++row) {
                for (int column = 0; column < found.columnCount(); ++column)
                    all.append(found.cell(row, column).value_or("NULL")).append("|");
            }
        }
        return all;
    };
    const std::string before = rows();
    ASSERT_NE(before.find("中性笔"), std::string::npos);
    upgrade();
    EXPECT_EQ(rows(), before);
}

TEST_F(Upgrade, hasStepsThatGoUpByOne) {
    int expected = 0;
    for (const store::UpgradeStep& step : store::upgradeSteps()) {
        EXPECT_EQ(step.version, ++expected);
        EXPECT_FALSE(step.statements.empty()) << step.version;
    }
    EXPECT_EQ(store::newestSchemaVersion(), expected);
}

// These texts are what a server gets.
TEST_F(Upgrade, asksTheStoreForTheseStatementsAlone) {
    upgrade();
    EXPECT_EQ(statements(),
              (Texts{"select fItemClassId from tblItemClass where fItemClassId=3",
                     "tblOrvenmodVersion",
                     "begin",
                     "update tblItemClass set fItemType=fItemType where fItemClassId=3",
                     "select fItemClassId from tblItemClass where fItemClassId=3",
                     "tblOrvenmodVersion",
                     "tblOrvenmodVersion",
                     "create table tblOrvenmodVersion(fVersion int not null)",
                     "drop index tblItem.ix_tblItem_5",
                     "create index ix_tblItem_5 on tblItem(fItemClassId,fIsDetail,fDepth)",
                     "drop index tblItem.ix_tblItem_2",
                     "create index ix_tblItem_2 on tblItem(fItemClassId,fName,fIsDetail)",
                     "drop index tblItem.ix_tblItem_4",
                     "create index ix_tblItem_4 on tblItem(fItemClassId,fParentId) include (fShortNumber)",
                     "drop index tblItem.ix_tblItem_4",
                     "create index ix_tblItem_4 on tblItem(fItemClassId,fParentId) include (fShortNumber)",
                     "drop index tblItem.ix_tblItem_7",
                     "create index ix_tblItem_7 on tblItem(fNBNumber,fItemId)",
                     "drop index ICItem.ix_ICItem_1",
                     "create index ix_ICItem_1 on ICItem(fNumber,fItemId)",
                     "delete from tblOrvenmodVersion",
                     "insert into tblOrvenmodVersion(fVersion) values(6)",
                     "commit"}));
}

TEST_F(Upgrade, runsOnlyTheStepsThatTheDatabaseLacks) {
    execute("create table tblOrvenmodVersion(fVersion int not null)");
    execute("insert into tblOrvenmodVersion(fVersion) values(4)");
    upgrade();
    for (const std::string& statement : statements())
        EXPECT_EQ(statement.find("ix_tblItem_2"), std::string::npos) << statement;
    EXPECT_EQ(std::count(statements().begin(), statements().end(), "drop index tblItem.ix_tblItem_4"), 1);
    EXPECT_EQ(version(), store::newestSchemaVersion());
}

TEST_F(Upgrade, changesNothingInADatabaseThatHasEveryStepAlready) {
    upgrade();
    const std::string before = shape();
    for (const char* noted : {"delete from tblOrvenmodVersion", "drop table tblOrvenmodVersion"}) {
        execute(noted);
        EXPECT_EQ(version(), 0);
        upgrade();
        EXPECT_EQ(version(), store::newestSchemaVersion()) << noted;
        EXPECT_EQ(shape(), before) << noted;
    }
}

TEST_F(Upgrade, makesAnIndexThatIsMissingAndReplacesOneOfOtherColumns) {
    dropIndexesOfSteps();
    execute("create index ix_tblItem_2 on tblItem(fDepth,fNumber)");
    upgrade();
    const std::string upgraded = upgradedShape();
    EXPECT_EQ(upgraded, shapeOfANewDatabase());
}

/// A server that ends the transaction with a statement that fails.
class EndedTransactions : public store::ConnectionWrapper {
public:
    using ConnectionWrapper::ConnectionWrapper;

    std::int64_t execute(std::string_view sql) override {
        if (ended_) throw Failure(store::FailureKind::transaction, 3930, "ended");
        try {
            return target().execute(sql);
        } catch (const Failure&) {
            target().rollbackTrans();
            ended_ = true;
            throw;
        }
    }
    bool inTransaction() const override { return ended_ || ConnectionWrapper::inTransaction(); }
    void rollbackTrans() override {
        if (!std::exchange(ended_, false)) target().rollbackTrans();
    }

private:
    bool ended_ = false;
};

TEST_F(Upgrade, makesAMissingIndexWhereTheTransactionEndsWithItsDrop) {
    dropIndexesOfSteps();
    EndedTransactions connection(connect());
    store::upgradeSchema(connection);
    const std::string upgraded = upgradedShape();
    EXPECT_EQ(upgraded, shapeOfANewDatabase());
}

TEST_F(Upgrade, onlyReadsADatabaseOfTheNewestVersion) {
    upgrade();
    upgrade(";Mode=ReadOnly");
    EXPECT_EQ(statements().size(), 3U);
}

TEST_F(Upgrade, leavesOneVersionWhereMoreWereNoted) {
    execute("create table tblOrvenmodVersion(fVersion int not null)");
    execute("insert into tblOrvenmodVersion(fVersion) values(1)");
    execute("insert into tblOrvenmodVersion(fVersion) values(2)");
    EXPECT_EQ(version(), 2);
    upgrade();
    EXPECT_EQ(connect()->open("select fVersion from tblOrvenmodVersion").rowCount(), 1U);
}

TEST_F(Upgrade, leavesTheDatabaseAsItWasWhicheverOperationFails) {
    const std::string before = contents();
    store::FaultPlan plan;
    store::FaultyStore faulty(store(), plan);
    do {
        plan.count = 0;
        ++plan.failAt;
        try {
            const auto connection = faulty.connect(connectionStringFor(file()));
            store::upgradeSchema(*connection);
            EXPECT_LT(plan.count, plan.failAt) << "operation " << plan.failAt << " failed unnoticed";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.text(), plan.text) << plan.failAt;
            EXPECT_EQ(contents(), before) << plan.failAt;
        }
    } while (plan.count >= plan.failAt);
    EXPECT_EQ(plan.failAt, 25) << "connecting, and twenty-three operations within";
    EXPECT_EQ(version(), store::newestSchemaVersion());
}

TEST_F(Upgrade, leavesTheDatabaseAsItWasWhereAStepIsRefused) {
    // The last step has no column to carry along.
    execute("drop index tblItem.ix_tblItem_4");
    execute("alter table tblItem drop column fShortNumber");
    const std::string before = contents();
    EXPECT_EQ(refusal().number(), 1911);
    EXPECT_EQ(contents(), before);
}

TEST_F(Upgrade, isRefusedForADatabaseThatIsNewer) {
    upgrade();
    execute("update tblOrvenmodVersion set fVersion=99");
    const std::string before = contents();
    const Failure failure = refusal();
    EXPECT_EQ(failure.number(), store::kNewerDatabase);
    EXPECT_EQ(failure.text(), "数据库的版本是 99，本程序最高支持版本 6，请先升级本程序。");
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(version(), 99);
}

TEST_F(Upgrade, isRefusedForADatabaseThatIsNoSuites) {
    std::filesystem::remove(file());
    connect(";Mode=Create")->execute("create table notes(text varchar(20))");
    const std::string before = contents();
    EXPECT_THROW(version(), Failure);
    EXPECT_EQ(refusal().text(), "对象名 'tblItemClass' 无效。");
    EXPECT_EQ(contents(), before);
}

TEST_F(Upgrade, isRefusedWhereTheDatabaseCannotBeWritten) {
    const std::string before = contents();
    const Failure failure = refusal(";Mode=ReadOnly");
    EXPECT_NE(failure.number(), 0);
    EXPECT_EQ(contents(), before);
}

/// An upgrade that does all but commit, and commits when the other process says so.
class HeldCommit : public store::ConnectionWrapper {
public:
    HeldCommit(std::unique_ptr<Connection> target, OtherProcess& other)
        : ConnectionWrapper(std::move(target)), other_(other) {}

    void commitTrans() override {
        other_.tell();
        other_.await();
        target().commitTrans();
    }

private:
    OtherProcess& other_;
};

TEST_F(Upgrade, waitsForAnotherProcessAndFindsItDone) {
    store::sqlite::SqliteStore::dropIdleHandles();
    OtherProcess first([this](OtherProcess& parent) {
        HeldCommit connection(connect(), parent);
        store::upgradeSchema(connection);
        return 0;
    });
    first.await();
    const auto second = connect(";Busy Timeout=20000");
    int waits = 0;
    second->setProgress([&] {
        if (++waits == 1) first.tell();
    });
    store::upgradeSchema(*second);
    ASSERT_GE(waits, 1);
    EXPECT_EQ(first.result(), 0);
    EXPECT_EQ(statements().back(), "commit");
    for (const std::string& statement : statements())
        EXPECT_FALSE(statement.starts_with("drop") || statement.starts_with("create")) << statement;
    EXPECT_EQ(version(), store::newestSchemaVersion());
}

TEST_F(Upgrade, isRefusedWhereAnotherHoldsTheDatabaseForTooLong) {
    const auto writer = connect();
    writer->beginTrans();
    EXPECT_EQ(refusal(";Busy Timeout=50").kind(), store::FailureKind::busy);
    EXPECT_EQ(version(), 0);
    writer->rollbackTrans();
    upgrade();
    EXPECT_EQ(version(), store::newestSchemaVersion());
}

}  // namespace
}  // namespace orvenmod::test
