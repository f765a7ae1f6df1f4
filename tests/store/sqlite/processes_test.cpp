// Two processes on one file: the other one is a forked child that follows single letters on a pipe.
#include <gtest/gtest.h>

#include "embeddeddatabase.h"
#include "support/otherprocess.h"

namespace orvenmod::store::sqlite::test {
namespace {

using orvenmod::test::OtherProcess;

class Processes : public EmbeddedDatabase {
protected:
    Processes() { connect()->execute("insert into t(id,n) values(1,10)"); }
};

TEST_F(Processes, ReadWhileAnotherHasATransactionOpen) {
    OtherProcess writer([this](OtherProcess& parent) {
        const auto connection = connect();
        connection->beginTrans();
        connection->execute("update t set n=20 where id=1");
        parent.tell();
        parent.await();
        connection->commitTrans();
        return 0;
    });
    writer.await();
    const auto connection = connect();
    EXPECT_EQ(value(*connection, "select n from t where id=1"), "10");
    writer.tell();
    EXPECT_EQ(writer.result(), 0);
    EXPECT_EQ(value(*connection, "select n from t where id=1"), "20");
}

TEST_F(Processes, WaitForEachOtherToWrite) {
    OtherProcess first([this](OtherProcess& parent) {
        const auto connection = connect();
        connection->beginTrans();
        connection->execute("update t set n=n+5 where id=1");
        parent.tell();
        parent.await();
        connection->commitTrans();
        return 0;
    });
    first.await();
    const auto connection = connect(";Busy Timeout=20000");
    // The other one commits only when this one has begun to wait, and windows can paint meanwhile.
    int calls = 0;
    connection->setProgress([&] {
        if (++calls == 1) first.tell();
    });
    connection->beginTrans();
    EXPECT_GE(calls, 1);
    connection->execute("update t set n=n+1 where id=1");
    connection->commitTrans();
    EXPECT_EQ(first.result(), 0);
    EXPECT_EQ(value(*connection, "select n from t where id=1"), "16");
}

TEST_F(Processes, GetTheBusyFailureWhenTheWaitIsOver) {
    OtherProcess writer([this](OtherProcess& parent) {
        const auto connection = connect();
        connection->beginTrans();
        parent.tell();
        parent.await();
        connection->rollbackTrans();
        return 0;
    });
    writer.await();
    const auto connection = connect(";Busy Timeout=50");
    for (const Failure& failure :
         {failureOf([&] { connection->beginTrans(); }), failureOf([&] { connection->execute("delete from t"); }),
          failureOf([&] { connection->execute("create table u(a int)"); })}) {
        EXPECT_EQ(failure.kind(), FailureKind::busy) << failure.text();
        EXPECT_NE(failure.text().find(file()), std::string::npos);
    }
    EXPECT_FALSE(connection->inTransaction());
    EXPECT_EQ(value(*connection, "select n from t where id=1"), "10");
    writer.tell();
    EXPECT_EQ(writer.result(), 0);
    EXPECT_EQ(connection->execute("delete from t"), 1);
}

TEST_F(Processes, DoNotOvertakeATransactionThatReadsBeforeItWrites) {
    const auto connection = connect();
    connection->beginTrans();
    const std::string before = value(*connection, "select n from t where id=1");
    OtherProcess writer([this](OtherProcess&) {
        return failureOf([this] { connect(";Busy Timeout=50")->execute("update t set n=99 where id=1"); }).kind() ==
                       FailureKind::busy
                   ? 0
                   : 1;
    });
    EXPECT_EQ(writer.result(), 0);
    connection->execute("update t set n=" + before + "+1 where id=1");
    connection->commitTrans();
    EXPECT_EQ(value(*connection, "select n from t where id=1"), "11");
}

TEST_F(Processes, CountTogetherWithoutLosingARow) {
    constexpr int kEach = 60;
    const auto count = [this](OtherProcess&) {
        for (int i = 0; i < kEach; ++i) {
            const auto connection = connect(";Busy Timeout=60000");
            connection->beginTrans();
            connection->execute("update t set n=n+1 where id=1");
            connection->commitTrans();
        }
        return 0;
    };
    OtherProcess first(count);
    OtherProcess second(count);
    EXPECT_EQ(first.result(), 0);
    EXPECT_EQ(second.result(), 0);
    EXPECT_EQ(value(*connect(), "select n from t where id=1"), std::to_string(10 + 2 * kEach));
}

TEST_F(Processes, OpenHandlesOfTheirOwnAfterAFork) {
    connect()->close();
    OtherProcess child([this](OtherProcess&) {
        connect()->execute("update t set n=30 where id=1");
        return 0;
    });
    EXPECT_EQ(child.result(), 0);
    EXPECT_EQ(value(*connect(), "select n from t where id=1"), "30");
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
