// The store on a real server: locks, deadlocks, killed sessions, letters.
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "store/odbc/sessionpool.h"
#include "store/tsql/failurenumbers.h"
#include "support/tdsserver.h"

namespace orvenmod::store::odbc {
namespace {

class OnAServer : public ::testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        database_ = orvenmod::test::TdsDatabase::get(reason);
        if (database_ == nullptr) GTEST_SKIP() << reason;
        database_->clear();
        connection_ = connect();
        connection_->execute("create table t(id int primary key,c varchar(20),n nvarchar(20))");
        connection_->execute("insert into t(id,c) values(1,'a')");
        connection_->execute("insert into t(id,c) values(2,'b')");
    }

    std::unique_ptr<Connection> connect() const { return database_->connect(); }
    static std::string value(Connection& connection, const std::string& sql) {
        const Recordset rows = connection.open(sql);
        return rows.eof() ? "no row" : std::string(rows.cell(0, 0).value_or("NULL"));
    }
    template <typename Work>
    static Failure failureOf(Work work) {
        try {
            work();
        } catch (const Failure& failure) {
            return failure;
        }
        return {FailureKind::other, 0, "no failure"};
    }

    orvenmod::test::TdsDatabase* database_ = nullptr;
    std::unique_ptr<Connection> connection_;
};

TEST_F(OnAServer, WindowsPaintWhileARowIsLocked) {
    connection_->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    const auto other = connect();
    int calls = 0;
    other->setProgress([&] {
        if (++calls == 3) connection_->rollbackTrans();
    });
    EXPECT_EQ(other->execute("update t set c='y' where id=1"), 1);
    EXPECT_GE(calls, 3);
    EXPECT_EQ(value(*connection_, "select c from t where id=1"), "y");
}

// There are servers that hear no cancel while a lock is waited for: such a session is given up.
TEST_F(OnAServer, ACancelLetsTheUserGoOnWhileALockIsWaitedFor) {
    connection_->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    const auto other = connect();
    other->beginTrans();
    other->setProgress([] { throw std::runtime_error("stop"); });
    EXPECT_THROW(other->execute("update t set c='y' where id=1"), std::runtime_error);
    other->rollbackTrans();
    other->close();
    connection_->commitTrans();
    EXPECT_EQ(connect()->execute("update t set c='z' where id=1 and c='x'"), 1);
}

TEST_F(OnAServer, TheVictimOfADeadlockSavesAtTheSecondTry) {
    const auto other = connect();
    connection_->beginTrans();
    other->beginTrans();
    connection_->execute("update t set c='x' where id=1");
    other->execute("update t set c='y' where id=2");
    Failure first(FailureKind::other, 0, "none");
    std::thread waiting([&] { first = failureOf([&] { connection_->execute("update t set c='x' where id=2"); }); });
    const Failure second = failureOf([&] { other->execute("update t set c='y' where id=1"); });
    // Whichever was chosen lets the other one in; that one ends, or the thread would wait for it.
    const bool otherIsVictim = second.number() != 0;
    if (!otherIsVictim) other->commitTrans();
    waiting.join();
    const Failure& failure = otherIsVictim ? second : first;
    Connection& victim = otherIsVictim ? *other : *connection_;
    Connection& winner = otherIsVictim ? *connection_ : *other;
    EXPECT_EQ(failure.kind(), FailureKind::busy) << failure.number() << failure.text();
    if (winner.inTransaction()) winner.commitTrans();
    EXPECT_EQ(failureOf([&] { victim.execute("update t set c='alone'"); }).number(), tsql::kTransactionLost);
    victim.rollbackTrans();
    victim.beginTrans();
    victim.execute("update t set c='again' where id=1");
    victim.execute("update t set c='again' where id=2");
    victim.commitTrans();
    EXPECT_EQ(value(*connection_, "select count(*) from t where c='again'"), "2");
}

TEST_F(OnAServer, ASessionIsKeptForTheNextUseAndReplacedWhereItWasKilled) {
    auto used = connect();
    const std::string session = value(*used, "select @@spid");
    used->close();
    used = connect();
    EXPECT_EQ(value(*used, "select @@spid"), session);
    used->close();
    connection_->execute("kill " + session);
    used = connect();
    EXPECT_NE(value(*used, "select @@spid"), session);
}

TEST_F(OnAServer, AKilledSessionIsALostConnection) {
    const auto killed = connect();
    killed->beginTrans();
    killed->execute("update t set c='x' where id=1");
    connection_->execute("kill " + value(*killed, "select @@spid"));
    const Failure failure = failureOf([&] { killed->execute("update t set c='y' where id=2"); });
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_EQ(failure.number(), tsql::kConnectionLost) << failure.text();
    killed->rollbackTrans();
    EXPECT_FALSE(killed->inTransaction());
    EXPECT_EQ(value(*connect(), "select count(*) from t where c in ('a','b')"), "2");
}

TEST_F(OnAServer, AKilledSessionIsReplacedWithinItsUse) {
    const auto killed = connect();
    connection_->execute("kill " + value(*killed, "select @@spid"));
    EXPECT_EQ(failureOf([&] { killed->execute("update t set c='y' where id=1"); }).number(), tsql::kConnectionLost);
    EXPECT_EQ(killed->execute("update t set c='z' where id=1"), 1);
    EXPECT_EQ(value(*connection_, "select c from t where id=1"), "z");
}

TEST_F(OnAServer, ATransactionThatWasLeftOpenHoldsNoLock) {
    auto left = connect();
    left->beginTrans();
    left->execute("update t set c='x' where id=1");
    left->close();
    EXPECT_EQ(connection_->execute("update t set c='y' where id=1"), 1);
}

TEST_F(OnAServer, SettingsOfOneUseDontReachTheNext) {
    auto used = connect();
    used->execute("set lock_timeout 123");
    used->close();
    used = connect();
    EXPECT_NE(value(*used, "select @@lock_timeout"), "123");
}

TEST_F(OnAServer, CharactersThatTheDatabaseLacksAreRefusedAndNeverStoredOtherwise) {
    for (const char* character : {"²", "𠀀"}) {
        const std::string text = std::string("甲") + character;
        EXPECT_EQ(failureOf([&] { connection_->execute("update t set c='" + text + "'"); }).number(),
                  tsql::kBeyondCodePage)
            << character;
        const auto writer = connection_->openTable("t");
        writer->addNew();
        writer->set("id", "9");
        writer->set("c", text);
        EXPECT_EQ(failureOf([&] { writer->update(); }).number(), tsql::kBeyondCodePage) << character;
    }
    EXPECT_EQ(value(*connection_, "select count(*) from t where c in ('a','b')"), "2");
}

TEST_F(OnAServer, WideColumnsTakeEveryCharacter) {
    const std::string text = "甲²€𠀀";
    const auto writer = connection_->openTable("dbo.[t]");
    writer->addNew();
    writer->set("id", "3");
    writer->set("c", "客户");
    writer->set("n", text);
    writer->update();
    EXPECT_EQ(value(*connection_, "select n from t where id=3"), text);
    EXPECT_EQ(value(*connection_, "select c from t where id=3"), "客户");
    connection_->execute("update t set n=N'" + text + "' where id=1");
    EXPECT_EQ(value(*connection_, "select n from t where id=1"), text);
}

TEST_F(OnAServer, NumbersComeByTheirColumnsOwnPrecision) {
    connection_->execute("create table v(r real,f float,m money,s smallmoney,d decimal(18,6))");
    connection_->execute("insert into v values(0.1,0.1,922337203685477.5807,-214748.3648,99999999999.999999)");
    const Recordset rows = connection_->open("select r,f,m,s,d from v");
    EXPECT_EQ(rows.cell(0, 0), "0.1");
    EXPECT_EQ(rows.cell(0, 1), "0.1");
    EXPECT_EQ(rows.cell(0, 2), "922337203685477.5807");
    EXPECT_EQ(rows.cell(0, 3), "-214748.3648");
    EXPECT_EQ(rows.cell(0, 4), "99999999999.999999");
}

}  // namespace
}  // namespace orvenmod::store::odbc
