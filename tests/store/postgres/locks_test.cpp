#include <gtest/gtest.h>

#include <future>

#include "suiteserver.h"

namespace orvenmod::store::postgres::test {
namespace {

class Locks : public OnTheServer {
protected:
    Locks() : first_(connect()), second_(connect(";Busy Timeout=100")) {
        first_->execute("insert into t(id,n) values(1,0)");
        first_->execute("insert into t(id,n) values(2,0)");
    }

    std::unique_ptr<Connection> first_;
    std::unique_ptr<Connection> second_;
};

TEST_F(Locks, ThatAreNotHadWithinTheBusyTimeoutAreTold) {
    first_->beginTrans();
    first_->execute("update t set n=1 where id=1");
    const Failure failure = failureOf([&] { second_->execute("update t set n=2 where id=1"); });
    EXPECT_EQ(failure.number(), 1222);
    EXPECT_EQ(failure.kind(), FailureKind::busy);
    EXPECT_EQ(failure.text(), "已超过了锁请求超时时段。");
    first_->commitTrans();
    EXPECT_EQ(second_->execute("update t set n=2 where id=1"), 1);
}

TEST_F(Locks, AreNotWaitedForWithoutABusyTimeout) {
    const auto hasty = connect(";Busy Timeout=0");
    first_->beginTrans();
    first_->execute("update t set n=1 where id=1");
    EXPECT_EQ(failureOf([&] { hasty->execute("update t set n=2 where id=1"); }).number(), 1222);
    first_->rollbackTrans();
}

TEST_F(Locks, ThatAreNotHadLeaveATransactionOpen) {
    first_->beginTrans();
    first_->execute("update t set n=1 where id=1");
    second_->beginTrans();
    second_->execute("update t set n=5 where id=2");
    EXPECT_EQ(failureOf([&] { second_->execute("update t set n=2 where id=1"); }).number(), 1222);
    EXPECT_TRUE(second_->inTransaction());
    second_->commitTrans();
    first_->rollbackTrans();
    EXPECT_EQ(value(*first_, "select n from t where id=2"), "5");
}

TEST_F(Locks, ThatWaitForEachOtherEndOneOfTheTwo) {
    const auto other = connect();
    first_->beginTrans();
    other->beginTrans();
    first_->execute("update t set n=1 where id=1");
    other->execute("update t set n=1 where id=2");
    const auto crossing = [](Connection& connection, const std::string& sql) {
        const Failure failure = failureOf([&] { connection.execute(sql); });
        if (failure.number() != 0) connection.rollbackTrans();
        return failure;
    };
    auto waiting = std::async(std::launch::async, crossing, std::ref(*first_), "update t set n=2 where id=2");
    const Failure second = crossing(*other, "update t set n=2 where id=1");
    const Failure first = waiting.get();
    EXPECT_EQ(first.number() + second.number(), 1205);
    EXPECT_NE((first.text() + second.text()).find("进程 ID "), std::string::npos);
    EXPECT_EQ((first.text() + second.text()).find('?'), std::string::npos) << first.text() << second.text();
    for (Connection* each : {first_.get(), other.get()}) {
        if (each->inTransaction()) each->commitTrans();
    }
    EXPECT_EQ(value(*first_, "select sum(n) from t"), "3");
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
