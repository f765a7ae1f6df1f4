// The schema's steps on a server: what an earlier version left becomes what a new database has.
#include "store/upgrade.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "store/connectionwrapper.h"
#include "store/fault.h"
#include "store/schema.h"
#include "store/trace.h"
#include "store/tsql/failurenumbers.h"
#include "suiteserver.h"

namespace orvenmod::store::postgres::test {
namespace {

class UpgradeOnTheServer : public ::testing::Test {
protected:
    UpgradeOnTheServer() {
        createSchema(*connect());
        connect()->execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fShortNumber) "
            "values(5,'01','中性笔',3,0,1,'01')");
    }
    ~UpgradeOnTheServer() override { PostgresStore::dropIdleSessions(); }

    std::unique_ptr<Connection> connect(const std::string& more = "") {
        return PostgresStore().connect(database_.connectionString() + more);
    }
    int version() { return schemaVersion(*connect()); }

    /// Every index and column with what was declared of it.
    std::string shape() const {
        return database_.run(
                   "SELECT string_agg(indexdef || coalesce(obj_description(to_regclass(quote_ident(indexname))), ''), "
                   "E'\\n' ORDER BY indexname) FROM pg_indexes WHERE schemaname = 'public'") +
               database_.run(
                   "SELECT string_agg(attrelid::regclass || '.' || attname || ' ' || format_type(atttypid, atttypmod) "
                   "|| "
                   "coalesce(col_description(attrelid, attnum), ''), E'\\n' ORDER BY attrelid::regclass::text, "
                   "attname) "
                   "FROM pg_attribute JOIN pg_class c ON c.oid = attrelid WHERE attnum > 0 AND NOT attisdropped AND "
                   "relkind IN ('r', 'v') AND relnamespace = 'public'::regnamespace");
    }
    /// As a version before the steps left it.
    void undoSteps() {
        const auto connection = connect();
        for (const std::string name : {"ix_tblItem_2", "ix_tblItem_4", "ix_tblItem_5"}) {
            connection->execute("drop index tblItem." + name);
            connection->execute("create index " + name + " on tblItem(fDepth,fNumber)");
        }
        connection->execute("drop table tblOrvenmodVersion");
    }

    ReadyDatabase database_;
};

TEST_F(UpgradeOnTheServer, GivesAnEarlierDatabaseTheShapeOfANewOne) {
    const std::string wanted = shape();
    ASSERT_NE(wanted.find("ix_tblItem_2"), std::string::npos) << wanted;
    undoSteps();
    EXPECT_EQ(version(), 0);
    EXPECT_NE(shape(), wanted);
    connect()->execute("drop index tblItem.ix_tblItem_5");
    upgradeSchema(*connect());
    EXPECT_EQ(version(), newestSchemaVersion());
    EXPECT_EQ(shape(), wanted);
    EXPECT_EQ(connect()->open("select fItemId from tblItem where fName='中性笔'").rowCount(), 1U);
}

TEST_F(UpgradeOnTheServer, LeavesTheDatabaseAsItWasWhicheverOperationFails) {
    undoSteps();
    const std::string before = shape();
    FaultPlan plan;
    PostgresStore store;
    FaultyStore faulty(store, plan);
    do {
        plan.count = 0;
        ++plan.failAt;
        try {
            upgradeSchema(*faulty.connect(database_.connectionString()));
            EXPECT_LT(plan.count, plan.failAt) << "operation " << plan.failAt << " failed unnoticed";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.text(), plan.text) << plan.failAt;
            EXPECT_EQ(shape(), before) << plan.failAt;
        }
    } while (plan.count >= plan.failAt);
    EXPECT_EQ(version(), newestSchemaVersion());
}

TEST_F(UpgradeOnTheServer, OnlyReadsADatabaseOfTheNewestVersion) {
    EXPECT_NO_THROW(upgradeSchema(*connect(";options=-c default_transaction_read_only=on")));
}

TEST_F(UpgradeOnTheServer, IsRefusedWhereTheDatabaseCannotBeWritten) {
    undoSteps();
    const std::string before = shape();
    const auto connection = connect(";options=-c default_transaction_read_only=on");
    EXPECT_EQ(failureOf([&] { upgradeSchema(*connection); }).number(), tsql::kNoRight);
    EXPECT_EQ(shape(), before);
}

TEST_F(UpgradeOnTheServer, IsRefusedWhereAnotherHoldsTheDatabaseForTooLong) {
    undoSteps();
    const auto writer = connect();
    writer->beginTrans();
    writer->execute("update tblItemClass set fItemType=fItemType where fItemClassId=3");
    EXPECT_EQ(failureOf([&] { upgradeSchema(*connect(";Busy Timeout=50")); }).kind(), FailureKind::busy);
    EXPECT_EQ(version(), 0);
    writer->rollbackTrans();
    upgradeSchema(*connect());
    EXPECT_EQ(version(), newestSchemaVersion());
}

/// An upgrade that does all but commit, and commits when it is let.
class HeldCommit : public ConnectionWrapper {
public:
    HeldCommit(std::unique_ptr<Connection> target, std::promise<void> reached, std::future<void> let)
        : ConnectionWrapper(std::move(target)), reached_(std::move(reached)), let_(std::move(let)) {}

    void commitTrans() override {
        reached_.set_value();
        let_.get();
        target().commitTrans();
    }

private:
    std::promise<void> reached_;
    std::future<void> let_;
};

TEST_F(UpgradeOnTheServer, WaitsForAnotherSessionAndFindsItDone) {
    undoSteps();
    std::vector<std::string> statements;
    PostgresStore store;
    TracingStore tracing(store, [&](const TraceRecord& record) { statements.push_back(record.sql); });
    // Its session knows the schema as it was.
    const auto second = tracing.connect(database_.connectionString() + ";Busy Timeout=20000");
    second->open("select fItemId from tblItem");
    statements.clear();

    std::promise<void> reached;
    auto ready = reached.get_future();
    auto let = std::make_unique<std::promise<void>>();
    HeldCommit held(connect(), std::move(reached), let->get_future());
    auto first = std::async(std::launch::async, [&held] { upgradeSchema(held); });
    ready.wait();
    int waits = 0;
    second->setProgress([&] {
        if (++waits == 1) let->set_value();
    });
    upgradeSchema(*second);
    EXPECT_GE(waits, 1);
    let.reset();
    first.get();
    for (const std::string& statement : statements)
        EXPECT_FALSE(statement.starts_with("drop") || statement.starts_with("create")) << statement;
    EXPECT_EQ(version(), newestSchemaVersion());
    EXPECT_EQ(connect()->open("select fVersion from tblOrvenmodVersion").rowCount(), 1U);
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
