#include "store/fault.h"

#include <gtest/gtest.h>

#include "scriptedstore.h"

namespace orvenmod::store {
namespace {

void useAll(Store& store) {
    const auto connection = store.connect("x");
    connection->beginTrans();
    connection->execute("delete t");
    connection->open("select a from t");
    const auto writer = connection->openTable("t");
    writer->addNew();
    writer->set("a", "1");
    writer->update();
    connection->commitTrans();
    connection->beginTrans();
    connection->rollbackTrans();
    connection->close();
}

TEST(Fault, CountsEveryOperationButTheClose) {
    test::ScriptedStore target;
    FaultPlan plan;
    FaultyStore store(target, plan);
    useAll(store);
    EXPECT_EQ(plan.count, 9);
}

TEST(Fault, FailsEachOperationInItsTurn) {
    for (int n = 1; n <= 9; ++n) {
        test::ScriptedStore target;
        FaultPlan plan;
        plan.failAt = n;
        FaultyStore store(target, plan);
        try {
            useAll(store);
            FAIL() << "operation " << n << " did not fail";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), 50000);
            EXPECT_EQ(failure.text(), "注入的故障");
        }
        EXPECT_EQ(plan.count, n);
    }
}

TEST(Fault, CountsEachFetchOfAListAndItsTending) {
    test::ScriptedStore target;
    FaultPlan plan;
    FaultyStore store(target, plan);
    const auto list = store.connect("x")->openList("select keys from t");
    EXPECT_EQ(plan.count, 2);
    list->cell(0, 0);
    list->cell(0, 0);
    EXPECT_EQ(plan.count, 3);
    list->cell(1, 0);
    list->tend();
    EXPECT_EQ(plan.count, 5);
    EXPECT_EQ(target.windows.fetches, 2);
    store.connect("x")->openUnseen("select keys from t")->cell(0, 0);
    EXPECT_EQ(plan.count, 8);
}

TEST(Fault, FailsAFetchOfAListOnceAndThenGivesTheRow) {
    test::ScriptedStore target;
    FaultPlan plan;
    FaultyStore store(target, plan);
    const auto list = store.connect("x")->openList("select keys from t");
    plan.failAt = 3;
    EXPECT_THROW(list->cell(1, 0), Failure);
    EXPECT_EQ(target.windows.fetches, 0);
    EXPECT_EQ(list->cell(1, 0), "2");
}

TEST(Fault, FailsTheOpeningOfAListBeforeItReachesTheTarget) {
    test::ScriptedStore target;
    FaultPlan plan;
    plan.failAt = 2;
    FaultyStore store(target, plan);
    const auto connection = store.connect("x");
    EXPECT_THROW(connection->openList("select a from t"), Failure);
    EXPECT_EQ(target.notes.size(), 1U);
    EXPECT_EQ(connection->openList("select a from t")->cell(1, 0), "2");
    EXPECT_EQ(plan.count, 3);
}

TEST(Fault, FailsEachStatementOfAFlightInItsTurn) {
    const std::vector<std::string> statements = {"delete a", "delete b", "delete c"};
    for (int n = 2; n <= 4; ++n) {
        test::ScriptedStore target;
        FaultPlan plan;
        plan.failAt = n;
        FaultyStore store(target, plan);
        const auto connection = store.connect("x");
        std::vector<std::int64_t> done;
        EXPECT_THROW(connection->executeAll(statements, [&](std::int64_t rows) { done.push_back(rows); }), Failure);
        EXPECT_EQ(plan.count, n);
        EXPECT_EQ(done, std::vector<std::int64_t>(static_cast<std::size_t>(n - 2), 3));
        EXPECT_EQ(target.notes.size(), static_cast<std::size_t>(n - 1)) << "with the connect";
        connection->executeAll(statements);
        EXPECT_EQ(plan.count, n + 3);
    }
}

TEST(Fault, CountsAFlightThatFailsByItself) {
    test::ScriptedStore target;
    FaultPlan plan;
    FaultyStore store(target, plan);
    const auto connection = store.connect("x");
    EXPECT_THROW(connection->executeAll(std::vector<std::string>{"delete a", "fail", "delete c"}), Failure);
    EXPECT_EQ(plan.count, 3);
    EXPECT_EQ(target.notes, (test::Notes{"connect x", "execute delete a", "execute fail"}));
}

TEST(Fault, LeavesTheTargetUntouchedByTheOperationThatFails) {
    test::ScriptedStore target;
    FaultPlan plan;
    plan.failAt = 2;
    FaultyStore store(target, plan);
    const auto connection = store.connect("x");
    EXPECT_THROW(connection->execute("delete t"), Failure);
    EXPECT_EQ(target.notes, (test::Notes{"connect x"}));
    EXPECT_EQ(connection->execute("delete t"), 3);
}

TEST(Fault, DropsTheRowOfAnUpdateThatFails) {
    test::ScriptedStore target;
    FaultPlan plan;
    plan.failAt = 3;
    FaultyStore store(target, plan);
    const auto connection = store.connect("x");
    const auto writer = connection->openTable("t");
    writer->addNew();
    writer->set("a", "1");
    EXPECT_THROW(writer->update(), Failure);
    EXPECT_EQ(target.notes.back(), "addNew");
}

}  // namespace
}  // namespace orvenmod::store
