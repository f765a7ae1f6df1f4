// Several statements in one flight: as if they had gone out one by one.
#include "contract.h"

namespace orvenmod::store::test {
namespace {

using Statements = std::vector<std::string>;

TEST_F(StoreContract, RunsAFlightInItsOrderAndCountsEachStatement) {
    std::vector<std::int64_t> rows;
    connection_->executeAll(Statements{"update t set c='x' where id=1", "delete from t where c='x'",
                                       "update t set c='y' where id=1", "insert into t(id,c) values(9,'z')"},
                            [&](std::int64_t touched) { rows.push_back(touched); });
    EXPECT_EQ(rows, (std::vector<std::int64_t>{1, 1, 0, 1}));
    EXPECT_EQ(value("select count(*) from t where id=1"), "0");
    EXPECT_EQ(value("select c from t where id=9"), "z");
}

TEST_F(StoreContract, KeepsWhatAFlightDidBeforeTheStatementThatFails) {
    NEEDS_KEPT_TRANSACTIONS();
    connection_->beginTrans();
    int done = 0;
    EXPECT_NE(numberOf([&] {
                  connection_->executeAll(Statements{"update t set c='x' where id=1", "update nosuch set c=1",
                                                     "update t set c='y' where id=2"},
                                          [&](std::int64_t) { ++done; });
              }),
              0);
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(connection_->inTransaction());
    EXPECT_EQ(value("select c from t where id=1"), "x");
    EXPECT_NE(value("select c from t where id=2"), "y");
    connection_->commitTrans();
    EXPECT_EQ(value("select c from t where id=1"), "x");
}

TEST_F(StoreContract, KeepsWhatWasDoneBeforeAFlightThatFails) {
    NEEDS_KEPT_TRANSACTIONS();
    connection_->beginTrans();
    connection_->execute("update t set c='first' where id=1");
    std::vector<std::int64_t> rows;
    EXPECT_NE(numberOf([&] {
                  connection_->executeAll(
                      Statements{"update t set c='x' where c='first'", "insert into t(id,c) values(9,'x')",
                                 "update t set c='y' where c='x'", "update nosuch set c=1", "delete from t"},
                      [&](std::int64_t touched) { rows.push_back(touched); });
              }),
              0);
    EXPECT_EQ(rows, (std::vector<std::int64_t>{1, 1, 2}));
    connection_->execute("update t set c='z' where id=9 and c='y'");
    connection_->commitTrans();
    EXPECT_EQ(value("select c from t where id=1"), "y");
    EXPECT_EQ(value("select c from t where id=9"), "z");
}

TEST_F(StoreContract, LeavesATransactionOpenWhoseFirstStatementFails) {
    NEEDS_KEPT_TRANSACTIONS();
    const std::string before = value("select c from t where id=1");
    for (const bool kept : {false, true}) {
        connection_->beginTrans();
        EXPECT_NE(numberOf([&] { connection_->execute("update nosuch set c=1"); }), 0);
        EXPECT_NE(numberOf([&] { connection_->executeAll(Statements{"update nosuch set c=1", "delete from t"}); }), 0);
        EXPECT_TRUE(connection_->inTransaction());
        connection_->execute("update t set c='x' where id=1");
        EXPECT_NE(numberOf([&] { connection_->open("select c from nosuch"); }), 0);
        if (kept) {
            connection_->commitTrans();
        } else {
            connection_->rollbackTrans();
        }
        EXPECT_EQ(value("select c from t where id=1"), kept ? "x" : before);
    }
}

TEST_F(StoreContract, CommitsATransactionOfNothingButAFailure) {
    NEEDS_KEPT_TRANSACTIONS();
    connection_->beginTrans();
    EXPECT_NE(numberOf([&] { connection_->execute("update nosuch set c=1"); }), 0);
    connection_->commitTrans();
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(connection_->execute("update t set c='x' where id=1"), 1);
}

TEST_F(StoreContract, KeepsWhatAFlightDidBeforeARowIsRefused) {
    NEEDS_THE_DIALECT();
    connection_->execute("create unique index ix on t(id)");
    connection_->beginTrans();
    EXPECT_TRUE(fails(2601, [&] {
        connection_->executeAll(Statements{"insert into t(id,c) values(8,'h')", "insert into t(id,c) values(8,'i')",
                                           "insert into t(id,c) values(10,'j')"});
    }));
    connection_->commitTrans();
    EXPECT_EQ(value("select count(*) from t where id in (8,10)"), "1");
}

// A class's table, its rows and its view go out together.
TEST_F(StoreContract, DefinesAndUsesWithinOneFlight) {
    NEEDS_THE_DIALECT();
    connection_->beginTrans();
    connection_->executeAll(Statements{"create table made(a int)", "insert into made(a) values(7)",
                                       "create view shown as select a from made", "alter table made add b varchar(5)",
                                       "update made set b='q'"});
    EXPECT_EQ(value("select a from shown"), "7");
    EXPECT_EQ(value("select b from made"), "q");
    connection_->rollbackTrans();
    EXPECT_TRUE(fails(208, [&] { connection_->open("select a from shown"); }));
}

TEST_F(StoreContract, KeepsWhatAFlightWithoutATransactionDidBeforeTheStatementThatFails) {
    NEEDS_THE_DIALECT();
    int done = 0;
    EXPECT_TRUE(fails(245, [&] {
        connection_->executeAll(
            Statements{"update t set c='x' where id=1", "update t set id='word'", "update t set c='y' where id=2"},
            [&](std::int64_t) { ++done; });
    }));
    EXPECT_EQ(done, 1);
    EXPECT_FALSE(connection_->inTransaction());
    connection_->close();
    connection_ = store_->again();
    EXPECT_EQ(value("select c from t where id=1"), "x");
    EXPECT_NE(value("select c from t where id=2"), "y");
}

TEST_F(StoreContract, KeepsWhatAFlightDidBeforeADefinitionThatFails) {
    NEEDS_THE_DIALECT();
    NEEDS_KEPT_TRANSACTIONS();
    connection_->beginTrans();
    EXPECT_EQ(numberOf([&] {
                  connection_->executeAll(Statements{"update t set c='x' where id=1", "create table t(a int)",
                                                     "update t set c='y' where id=1"});
              }),
              2714);
    connection_->commitTrans();
    EXPECT_EQ(value("select c from t where id=1"), "x");
}

TEST_F(StoreContract, TakesAnEmptyFlightAndOneOfManyStatements) {
    connection_->executeAll({});
    Statements many;
    for (int i = 100; i < 1100; ++i)
        many.push_back("insert into t(id,c) values(" + std::to_string(i) + ",'" + std::to_string(i) + "')");
    connection_->beginTrans();
    connection_->executeAll(many);
    connection_->commitTrans();
    EXPECT_EQ(value("select count(*) from t where id>=100"), "1000");
}

TEST_F(StoreContract, RefusesAFlightOnceItIsClosed) {
    connection_->close();
    EXPECT_NE(numberOf([&] { connection_->executeAll(Statements{"delete from t"}); }), 0);
}

}  // namespace
}  // namespace orvenmod::store::test
