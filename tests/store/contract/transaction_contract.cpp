#include "contract.h"

namespace orvenmod::store::test {
namespace {

TEST_F(StoreContract, KeepsWhatATransactionCommits) {
    connection_->beginTrans();
    EXPECT_TRUE(connection_->inTransaction());
    connection_->execute("update t set c='x' where id=1");
    connection_->commitTrans();
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(value("select c from t where id=1"), "x");
}

TEST_F(StoreContract, UndoesWhatATransactionRollsBack) {
    connection_->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    connection_->rollbackTrans();
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(value("select c from t where id=1"), "甲");
}

TEST_F(StoreContract, RefusesToEndATransactionThatHasNotBegun) {
    EXPECT_EQ(numberOf([&] { connection_->commitTrans(); }), 3902);
    EXPECT_EQ(numberOf([&] { connection_->rollbackTrans(); }), 3903);
}

TEST_F(StoreContract, RefusesASecondBeginning) {
    connection_->beginTrans();
    EXPECT_NE(numberOf([&] { connection_->beginTrans(); }), 0);
    EXPECT_TRUE(connection_->inTransaction());
    connection_->rollbackTrans();
}

TEST_F(StoreContract, KeepsATransactionOpenOverAStatementThatFails) {
    NEEDS_KEPT_TRANSACTIONS();
    connection_->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    EXPECT_NE(numberOf([&] { connection_->execute("update nosuch set c=1"); }), 0);
    EXPECT_TRUE(connection_->inTransaction());
    connection_->commitTrans();
    EXPECT_EQ(value("select c from t where id=1"), "x");
}

// So that a statement can be tried whose work may be done already.
TEST_F(StoreContract, KeepsATransactionOpenOverADefinitionThatIsRefused) {
    NEEDS_THE_DIALECT();
    NEEDS_KEPT_TRANSACTIONS();
    connection_->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    EXPECT_EQ(numberOf([&] { connection_->execute("drop index t.nosuch"); }), 3701);
    EXPECT_EQ(numberOf([&] { connection_->execute("create table t(id int)"); }), 2714);
    EXPECT_EQ(numberOf([&] { connection_->open("select * from nosuch"); }), 208);
    EXPECT_TRUE(connection_->inTransaction());
    connection_->commitTrans();
    EXPECT_EQ(value("select c from t where id=1"), "x");
}

TEST_F(StoreContract, UndoesAStatementThatFailsHalfWay) {
    NEEDS_THE_DIALECT();
    connection_->execute("update t set c='5' where id=1");
    connection_->execute("update t set c='abc' where id=2");
    for (const bool within : {false, true}) {
        if (within) connection_->beginTrans();
        EXPECT_TRUE(fails(245, [&] { connection_->execute("update t set id=c"); }));
        if (within && !store_->keepsTransactions()) connection_->rollbackTrans();
        EXPECT_EQ(value("select count(*) from t where id in (1,2)"), "2");
        if (connection_->inTransaction()) connection_->rollbackTrans();
    }
}

TEST_F(StoreContract, RunsNothingOfATransactionAloneThatAFailureEnded) {
    NEEDS_THE_DIALECT();
    if (store_->keepsTransactions()) GTEST_SKIP() << "this store's transactions outlive a failure";
    connection_->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    EXPECT_NE(numberOf([&] { connection_->execute("update t set id='abc'"); }), 0);
    EXPECT_TRUE(connection_->inTransaction());
    EXPECT_EQ(numberOf([&] { connection_->execute("update t set c='y' where id=2"); }), 3930);
    EXPECT_EQ(numberOf([&] { connection_->open("select c from t"); }), 3930);
    EXPECT_EQ(numberOf([&] { connection_->commitTrans(); }), 3930);
    connection_->rollbackTrans();
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(value("select count(*) from t where c='x' or c='y'"), "0");
    connection_->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    connection_->commitTrans();
    EXPECT_EQ(value("select c from t where id=1"), "x");
}

TEST_F(StoreContract, UndoesAnOpenTransactionWhenItIsClosed) {
    connection_->beginTrans();
    connection_->execute("delete from t");
    connection_->close();
    connection_ = store_->again();
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(value("select count(*) from t"), "2");
}

TEST_F(StoreContract, UndoesADefinitionWithItsTransaction) {
    if (!store_->hasTransactionalDefinitions()) GTEST_SKIP() << "this store's driver commits definitions at once";
    connection_->beginTrans();
    connection_->execute("create table u(a int)");
    connection_->execute("alter table t add e int");
    connection_->execute("insert into u values(1)");
    connection_->rollbackTrans();
    EXPECT_TRUE(fails(208, [&] { connection_->open("select * from u"); }));
    EXPECT_TRUE(fails(207, [&] { connection_->open("select e from t"); }));
    connection_->execute("create table u(b int)");
    EXPECT_EQ(connection_->open("select b from u").rowCount(), 0U);
}

}  // namespace
}  // namespace orvenmod::store::test
