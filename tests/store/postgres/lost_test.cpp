// A connection that the server or the network ends.
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <stdexcept>
#include <string>

#include "store/tsql/failurenumbers.h"
#include "suiteserver.h"

namespace orvenmod::store::postgres::test {
namespace {

class LostSession : public OnTheServer {
protected:
    LostSession() : connection_(connect()) { connection_->execute("insert into t(id) values(1)"); }

    // Several seconds of work.
    static constexpr const char* kLong =
        "select count(*) from t a, t b, t c, t d, t e, t f where a.n+b.n+c.n+d.n+e.n+f.n>5";
    // Millions of rows, the first of which come at once; the last don't within some tenths of a second.
    static constexpr const char* kList = "select a.id,b.c,c.n,d.id from t a, t b, t c, t d, t e where e.id<3";
    void fill() { foreignly("INSERT INTO t(id, n) SELECT i, 1 FROM generate_series(1, 30) i"); }

    std::unique_ptr<Connection> connection_;
};

TEST_F(LostSession, BetweenTwoStatementsIsReplaced) {
    terminateSessions();
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "1");
    terminateSessions();
    EXPECT_EQ(connection_->execute("insert into t(id) values(2)"), 1);
    connection_->beginTrans();
    terminateSessions();
    EXPECT_EQ(connection_->execute("insert into t(id) values(3)"), 1);
    connection_->commitTrans();
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "3");
}

TEST_F(LostSession, KeepsItsProgressWhenItIsReplaced) {
    fill();
    int calls = 0;
    connection_->setProgress([&calls] { ++calls; });
    terminateSessions();
    connection_->open(kList);
    EXPECT_GE(calls, 1);
}

TEST_F(LostSession, WithinAChangeOutsideATransactionMayHaveStoredIt) {
    fill();
    connection_->setProgress([this] { terminateSessions(); });
    const std::string sql = std::string("update t set n=2 where id<(") + kLong + ")";
    EXPECT_EQ(failureOf([&] { connection_->execute(sql); }).number(), tsql::kCommitUnknown);
}

TEST_F(LostSession, WithinATransactionLeavesNothingOfIt) {
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    const Failure failure = failureOf([&] { connection_->execute("insert into t(id) values(3)"); });
    EXPECT_EQ(failure.number(), tsql::kConnectionLost);
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_TRUE(connection_->inTransaction());
    EXPECT_EQ(failureOf([&] { connection_->execute("insert into t(id) values(4)"); }).number(), tsql::kTransactionLost);
    EXPECT_EQ(failureOf([&] { connection_->commitTrans(); }).number(), tsql::kTransactionLost);
    connection_->rollbackTrans();
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "1");
}

TEST_F(LostSession, BeforeACommitIsTold) {
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    EXPECT_EQ(failureOf([&] { connection_->commitTrans(); }).number(), tsql::kCommitUnknown);
    EXPECT_TRUE(connection_->inTransaction()) << "whoever commits rolls back after a failure";
    connection_->rollbackTrans();
    EXPECT_FALSE(connection_->inTransaction());
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "1");
}

TEST_F(LostSession, BeforeARollbackIsAsGood) {
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    connection_->rollbackTrans();
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "1");
}

TEST_F(LostSession, WhileAQueryIsAwaitedIsTold) {
    fill();
    connection_->setProgress([this] { terminateSessions(); });
    EXPECT_EQ(failureOf([&] { connection_->open(kLong); }).number(), tsql::kConnectionLost);
    connection_->setProgress({});
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "31");
}

TEST_F(LostSession, WhileAListArrivesIsTold) {
    fill();
    connection_->setProgress([this] { terminateSessions(); });
    EXPECT_EQ(failureOf([&] { connection_->open(kList); }).number(), tsql::kConnectionLost);
    connection_->setProgress({});
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "31");
}

TEST_F(LostSession, NamesTheServer) {
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    const Failure failure = failureOf([&] { connection_->open("select * from t"); });
    EXPECT_NE(failure.text().find(orvenmod::test::PostgresServer::shared().host()), std::string::npos);
}

// A library may have seen no more than the end of the line.
void expectTheServersWords(const Failure& failure) {
    const std::string text = failure.text();
    EXPECT_TRUE(text.find("\n会话已被管理员终止。\n") != std::string::npos ||
                text.find("\n服务器关闭了连接。\n") != std::string::npos)
        << text;
    EXPECT_TRUE(text.find("administrator command") != std::string::npos ||
                text.find("server closed the connection") != std::string::npos)
        << text;
}

TEST_F(LostSession, TellsTheCauseAndTheServersWords) {
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    expectTheServersWords(failureOf([&] { connection_->execute("insert into t(id) values(3)"); }));
    connection_->rollbackTrans();
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    expectTheServersWords(failureOf([&] { connection_->commitTrans(); }));
    connection_->rollbackTrans();
    fill();
    connection_->setProgress([this] { terminateSessions(); });
    const Failure awaited = failureOf([&] { connection_->open(kLong); });
    EXPECT_NE(awaited.text().find("会话已被管理员终止。"), std::string::npos) << awaited.text();
}

TEST_F(LostSession, IsForgottenWithItsConnection) {
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    connection_->close();
    EXPECT_EQ(value(*connect(), "select count(*) from t"), "1");
}

TEST_F(LostSession, IsNotNeededForAnotherProgress) {
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(2)");
    terminateSessions();
    failureOf([&] { connection_->commitTrans(); });
    connection_->setProgress([] {});
    connection_->rollbackTrans();
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "1");
}

using Awaiting = LostSession;

TEST_F(Awaiting, LetsWindowsPaint) {
    fill();
    int calls = 0;
    connection_->setProgress([&calls] {
        if (++calls == 3) throw std::runtime_error("stop");
    });
    EXPECT_THROW(connection_->open(kLong), std::runtime_error);
    EXPECT_EQ(calls, 3);
    connection_->setProgress({});
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "31");
}

TEST_F(Awaiting, LetsWindowsPaintWhileAListArrives) {
    fill();
    int calls = 0;
    connection_->setProgress([&calls] { ++calls; });
    EXPECT_EQ(connection_->open(kList).rowCount(), 31U * 31 * 31 * 31 * 3);
    EXPECT_GE(calls, 2);
}

TEST_F(Awaiting, IsEndedWithinATransactionThatStaysOpen) {
    fill();
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(99)");
    connection_->setProgress([] { throw std::runtime_error("stop"); });
    EXPECT_THROW(connection_->open(kLong), std::runtime_error);
    connection_->setProgress({});
    connection_->commitTrans();
    EXPECT_EQ(value(*connection_, "select count(*) from t where id=99"), "1");
}

// Its check comes with the commit, and needs a row that somebody else holds.
TEST_F(Awaiting, ACommitIsNotEndedByTheProgress) {
    foreignly(
        "CREATE FUNCTION touch() RETURNS trigger LANGUAGE plpgsql AS "
        "$$BEGIN UPDATE t SET n = 7 WHERE id = 1; RETURN NULL; END$$; "
        "CREATE CONSTRAINT TRIGGER touches AFTER INSERT ON t DEFERRABLE INITIALLY DEFERRED "
        "FOR EACH ROW EXECUTE FUNCTION touch()");
    const auto holder = connect();
    holder->beginTrans();
    holder->execute("update t set n=1 where id=1");
    connection_->beginTrans();
    connection_->execute("insert into t(id) values(99)");
    int calls = 0;
    connection_->setProgress([&] {
        if (++calls == 2) holder->rollbackTrans();
        throw std::runtime_error("stop");
    });
    EXPECT_NO_THROW(connection_->commitTrans());
    EXPECT_GE(calls, 2);
    EXPECT_FALSE(connection_->inTransaction());
    connection_->setProgress({});
    EXPECT_EQ(value(*connection_, "select count(*) from t where id=99"), "1");
}

// The server hears no cancel any more.
class HungServer : public LostSession {
protected:
    HungServer()
        : process_(std::stoi(database_.run("SELECT pid FROM pg_stat_activity WHERE datname = current_database() AND "
                                           "usename = 'suite'"))) {
        fill();
        connection_->setProgress([this] {
            ::kill(process_, SIGSTOP);
            throw std::runtime_error("stop");
        });
    }
    ~HungServer() override { ::kill(process_, SIGCONT); }

    void expectWorkAgain() {
        EXPECT_LT(std::chrono::steady_clock::now() - start_, std::chrono::seconds(10));
        connection_->setProgress({});
        EXPECT_EQ(value(*connection_, "select count(*) from t"), "31");
    }

private:
    pid_t process_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

TEST_F(HungServer, IsGivenUpByWhomStopsWaiting) {
    EXPECT_THROW(connection_->open(kLong), std::runtime_error);
    expectWorkAgain();
}

TEST_F(HungServer, IsGivenUpWithItsTransaction) {
    connection_->beginTrans();
    const Failure failure = failureOf([&] { connection_->open(kLong); });
    EXPECT_EQ(failure.number(), tsql::kConnectionLost);
    EXPECT_NE(failure.text().find("服务器没有应答。"), std::string::npos) << failure.text();
    connection_->rollbackTrans();
    expectWorkAgain();
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
