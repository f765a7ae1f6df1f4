// Statements, against a driver that the test plays.
#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>

#include <stdexcept>

#include "store/odbc/odbcstore.h"
#include "store/odbc/sessionpool.h"
#include "store/tsql/failurenumbers.h"
#include "support/scripteddriver/installeddrivers.h"
#include "support/scripteddriver/scriptedserver.h"

namespace orvenmod::store::odbc {
namespace {

using orvenmod::test::Answer;
using orvenmod::test::Diagnostic;
using orvenmod::test::failed;
using orvenmod::test::oneRow;
using orvenmod::test::Session;

const std::string kString = "Driver=Scripted;Server=host";

class OdbcStatements : public ::testing::Test {
protected:
    OdbcStatements() {
        dropIdleSessions();
        orvenmod::test::freshServer();
    }
    // The server that the test plays goes before the pool does.
    ~OdbcStatements() override { dropIdleSessions(); }
    static void SetUpTestSuite() { static const orvenmod::test::InstalledDrivers installed({"Scripted"}); }

    std::unique_ptr<Connection> connect(const std::string& more = "") { return OdbcStore().connect(kString + more); }
    const std::vector<std::string>& sent() const { return server_.sessions.back().statements; }

    /// The script: what a statement that begins so is answered.
    void answer(const std::string& beginning, const Answer& given) {
        script_.emplace_back(beginning, given);
        server_.onStatement = [this](Session&, const std::string& sql) {
            for (const auto& [start, scripted] : script_) {
                if (sql.starts_with(start)) return scripted;
            }
            return Answer{};
        };
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
    Failure failureFor(const std::vector<Diagnostic>& records) {
        answer("update", failed(records));
        return failureOf([this] { connect()->execute("update t set a=1"); });
    }

    orvenmod::test::ScriptedServer& server_ = orvenmod::test::ScriptedServer::get();
    std::vector<std::pair<std::string, Answer>> script_;
};

const std::vector<Diagnostic> kVictim = {{"40001", 1205, "[Scripted]chosen as the victim of a deadlock"}};

TEST_F(OdbcStatements, SendNoSecondStatement) {
    const auto connection = connect();
    EXPECT_EQ(failureOf([&] { connection->open("select 1; delete from tblItem"); }).number(), tsql::kSyntaxNear);
    EXPECT_EQ(failureOf([&] { connection->open("select a from t where c='' delete from tblItem"); }).number(),
              tsql::kSyntaxNearKeyword);
    EXPECT_EQ(failureOf([&] { connection->execute(""); }).number(), tsql::kSyntaxNear);
    EXPECT_TRUE(sent().empty());
    connection->execute(" update  t set\ta='x;' ");
    EXPECT_EQ(sent().back(), " update  t set\ta='x;' ");
}

TEST_F(OdbcStatements, ThatChangeAreNotOpened) {
    const auto connection = connect();
    EXPECT_EQ(failureOf([&] { connection->open("delete from t"); }).number(), tsql::kNoRows);
    EXPECT_EQ(failureOf([&] { connection->open("select a into u from t"); }).number(), tsql::kNoRows);
    EXPECT_TRUE(sent().empty());
}

TEST_F(OdbcStatements, OfATransactionThatTheServerEndedAreRefused) {
    Answer victim = failed(kVictim);
    victim.endsTransaction = true;
    answer("update", victim);
    answer("select @@trancount", oneRow({"0"}));
    const auto connection = connect();
    connection->beginTrans();
    EXPECT_EQ(failureOf([&] { connection->execute("update t set a=1"); }).kind(), FailureKind::busy);
    const std::size_t count = sent().size();
    EXPECT_EQ(failureOf([&] { connection->execute("insert into t values(1)"); }).number(), tsql::kTransactionLost);
    EXPECT_EQ(failureOf([&] { connection->open("select a from t"); }).number(), tsql::kTransactionLost);
    EXPECT_EQ(failureOf([&] { connection->openTable("t"); }).number(), tsql::kTransactionLost);
    EXPECT_EQ(failureOf([&] { connection->commitTrans(); }).number(), tsql::kTransactionLost);
    connection->rollbackTrans();
    EXPECT_EQ(sent().size(), count);
    EXPECT_FALSE(connection->inTransaction());
    connection->beginTrans();
    connection->execute("insert into t values(1)");
    connection->commitTrans();
    EXPECT_EQ(sent().back(), "commit transaction");
}

TEST_F(OdbcStatements, OfATransactionThatOutlivesAFailureGoOn) {
    answer("update", failed({{"23000", 2627, "[Scripted]doubled"}}));
    answer("select @@trancount", oneRow({"1"}));
    const auto connection = connect();
    connection->beginTrans();
    EXPECT_EQ(failureOf([&] { connection->execute("update t set a=1"); }).number(), tsql::kDuplicateKey);
    connection->execute("insert into t values(1)");
    EXPECT_EQ(sent().back(), "insert into t values(1)");
    connection->commitTrans();
}

TEST_F(OdbcStatements, ThatControlTransactionsAreTheConnections) {
    const auto connection = connect();
    connection->execute("BEGIN TRAN");
    EXPECT_TRUE(connection->inTransaction());
    connection->execute("rollback");
    EXPECT_FALSE(connection->inTransaction());
}

TEST_F(OdbcStatements, OnALostConnectionNameTheServer) {
    Answer lost = failed({{"HY000", 0, "[Scripted]Unknown error"}});
    lost.dies = true;
    answer("update", lost);
    const Failure chinese = failureOf([&] { connect()->execute("update t set a=1"); });
    EXPECT_EQ(chinese.kind(), FailureKind::connection);
    EXPECT_EQ(chinese.number(), tsql::kConnectionLost);
    EXPECT_NE(chinese.text().find("“host”"), std::string::npos) << chinese.text();
    EXPECT_NE(chinese.text().find("Unknown error"), std::string::npos) << chinese.text();
    const Failure english = failureOf([&] { connect(";Language=us_english")->execute("update t set a=1"); });
    EXPECT_NE(english.text().find("'host' was lost"), std::string::npos) << english.text();
    EXPECT_EQ(idleSessions(), 0U);
}

TEST_F(OdbcStatements, OfASessionThatEndedTellTheCause) {
    struct Ended {
        Diagnostic record;
        const char* chinese;
        const char* english;
    };
    const Ended kEnds[] = {
        {{"08S01", 20009, "[Scripted]Adaptive Server is unavailable"}, "服务器不可用", "The server is not available."},
        {{"08S01", 20017, "[Scripted]Unexpected EOF"}, "服务器关闭了连接", "The server closed the connection."},
        {{"08S01", 0, "[Scripted]Communication link failure"}, "网络连接已断开", "The network connection is gone."},
        {{"HY000", 596, "[Scripted]in the kill state."}, "会话已被管理员终止", "killed by an administrator."},
        {{"42000", 6005, "[Scripted]SHUTDOWN is in progress."}, "服务器正在关闭", "The server is shutting down."}};
    for (const auto& [record, chinese, english] : kEnds) {
        script_.clear();
        answer("update", failed({record}));
        const Failure told = failureOf([&] { connect()->execute("update t set a=1"); });
        EXPECT_EQ(told.number(), tsql::kConnectionLost) << record.text;
        EXPECT_NE(told.text().find("“host”"), std::string::npos) << told.text();
        EXPECT_NE(told.text().find(chinese), std::string::npos) << told.text();
        const Failure toldInEnglish = failureOf([&] { connect(";Language=us_english")->execute("update t set a=1"); });
        EXPECT_NE(toldInEnglish.text().find("'host'"), std::string::npos) << toldInEnglish.text();
        EXPECT_NE(toldInEnglish.text().find(english), std::string::npos) << toldInEnglish.text();
    }
}

TEST_F(OdbcStatements, ThatCommitOnALostConnectionLeaveItOpenWhetherTheyDid) {
    Answer lost = failed({{"08S01", 20004, "[Scripted]Read from the server failed"}});
    lost.dies = true;
    answer("commit", lost);
    const auto connection = connect();
    connection->beginTrans();
    const Failure failure = failureOf([&] { connection->commitTrans(); });
    EXPECT_EQ(failure.number(), tsql::kCommitUnknown);
    EXPECT_NE(failure.text().find("\n服务器关闭了连接。\nRead from the server failed"), std::string::npos)
        << failure.text();
    connection->rollbackTrans();
    EXPECT_FALSE(connection->inTransaction());
}

TEST_F(OdbcStatements, FailWithTheirCauseAmongAllRecords) {
    const Failure behindHint =
        failureFor({{"01003", 8153, "[Scripted]Null was eliminated"}, {"23000", 2627, "[Scripted]doubled"}});
    EXPECT_EQ(behindHint.number(), 2627);
    EXPECT_EQ(behindHint.text(), "doubled");
    script_.clear();
    const Failure both =
        failureFor({{"42000", 5074, "[Scripted]depends"}, {"42000", 4922, "[Scripted]failed"}, {"01000", 3621, "end"}});
    EXPECT_EQ(both.number(), 5074);
    EXPECT_EQ(both.text(), "depends\nfailed");
    script_.clear();
    const Failure behindPrint =
        failureFor({{"01000", 0, "[Scripted]printed"}, {"42000", 50000, "[Scripted]a trigger's own"}});
    EXPECT_EQ(behindPrint.kind(), FailureKind::other);
    EXPECT_EQ(behindPrint.number(), 50000);
    EXPECT_EQ(behindPrint.text(), "a trigger's own");
}

TEST_F(OdbcStatements, ThatWaitForARowInVainTellWhoHoldsItAndHowLongTheyWaited) {
    answer("update", failed({{"HYT00", tsql::kLockTimeout, "[Scripted]canceling statement due to lock timeout"}}));
    const Failure chinese = failureOf([&] { connect(";Busy Timeout=1500")->execute("update t set a=1"); });
    EXPECT_EQ(chinese.kind(), FailureKind::busy);
    EXPECT_EQ(chinese.number(), tsql::kLockTimeout);
    EXPECT_EQ(chinese.text(),
              "已超过了锁请求超时时段。\n另一个用户正在更改同样的数据，等待 1.5 秒后仍未完成。\n"
              "canceling statement due to lock timeout");
    const Failure english =
        failureOf([&] { connect(";Busy Timeout=2000;Language=English")->execute("update t set a=1"); });
    EXPECT_EQ(english.text(),
              "Lock request time out period exceeded.\nAnother user is changing the same rows and had not finished "
              "after 2 s.\ncanceling statement due to lock timeout");
}

TEST_F(OdbcStatements, ThatWaitForARowInVainAreKnownByTheirWordsToo) {
    const Failure ownNumber = failureFor({{"42000", 33557097, "[Scripted]canceling statement due to lock timeout"}});
    EXPECT_EQ(ownNumber.kind(), FailureKind::busy);
    EXPECT_EQ(ownNumber.number(), tsql::kLockTimeout);
}

TEST_F(OdbcStatements, OfAnUnknownNumberAreNoSyntaxFailures) {
    EXPECT_EQ(failureFor({{"42000", 50000, "[Scripted]a trigger's own"}}).kind(), FailureKind::other);
    script_.clear();
    EXPECT_EQ(failureFor({{"42000", 102, "[Scripted]near"}}).kind(), FailureKind::syntax);
}

TEST_F(OdbcStatements, LetWindowsPaintWhileTheServerWorks) {
    Answer waiting = oneRow({"1"});
    waiting.waits = true;
    answer("select a", waiting);
    const auto connection = connect();
    int calls = 0;
    connection->setProgress([&] {
        if (++calls == 3) server_.release();
    });
    EXPECT_EQ(connection->open("select a from t").rowCount(), 1U);
    EXPECT_EQ(calls, 3);
}

TEST_F(OdbcStatements, OfAnAsynchronousDriverLetWindowsPaintToo) {
    server_.asynchronous = true;
    Answer waiting = oneRow({"1"});
    waiting.polls = 60;
    answer("select a", waiting);
    const auto connection = connect();
    int calls = 0;
    connection->setProgress([&] { ++calls; });
    EXPECT_EQ(connection->open("select a from t").rowCount(), 1U);
    EXPECT_GE(calls, 1);
}

TEST_F(OdbcStatements, AreCancelledByAProgressThatThrows) {
    for (const bool asynchronous : {false, true}) {
        dropIdleSessions();
        script_.clear();
        server_.asynchronous = asynchronous;
        Answer waiting = oneRow({"1"});
        waiting.waits = !asynchronous;
        waiting.polls = asynchronous ? 200 : 0;
        answer("select a", waiting);
        const int before = server_.cancels;
        const auto connection = connect();
        connection->setProgress([] { throw std::runtime_error("stop"); });
        EXPECT_THROW(connection->open("select a from t"), std::runtime_error);
        EXPECT_EQ(server_.cancels, before + 1);
        connection->setProgress({});
        connection->execute("update t set a=1");
        EXPECT_EQ(sent().back(), "update t set a=1");
    }
}

TEST_F(OdbcStatements, ThatEndATransactionAreNotEndedThemselves) {
    Answer waiting;
    waiting.waits = true;
    answer("commit", waiting);
    answer("rollback", waiting);
    for (const bool commits : {true, false}) {
        const auto connection = connect();
        connection->beginTrans();
        connection->execute("update t set a=1");
        int calls = 0;
        connection->setProgress([&] {
            if (++calls == 2) server_.release();
            throw std::runtime_error("stop");
        });
        EXPECT_NO_THROW(commits ? connection->commitTrans() : connection->rollbackTrans());
        EXPECT_GE(calls, 2);
        EXPECT_EQ(server_.cancels, 0);
        EXPECT_FALSE(connection->inTransaction());
    }
}

TEST_F(OdbcStatements, OfAServerThatHearsNoCancelAreGivenUp) {
    Answer waiting = oneRow({"1"});
    waiting.waits = true;
    server_.deaf = true;
    answer("select a", waiting);
    auto connection = connect();
    connection->beginTrans();
    connection->setProgress([] { throw std::runtime_error("stop"); });
    EXPECT_THROW(connection->open("select a from t"), std::runtime_error);
    EXPECT_EQ(failureOf([&] { connection->execute("update t set a=1"); }).number(), tsql::kTransactionLost);
    connection->rollbackTrans();
    connection->close();
    EXPECT_EQ(idleSessions(), 0U);
    server_.release();
    server_.awaitClosed();
}

TEST_F(OdbcStatements, FindASessionThatAnotherUseHasOpened) {
    connect()->execute("update t set a=1");
    connect()->execute("update t set a=2");
    EXPECT_EQ(server_.sessions.size(), 1U);
    EXPECT_EQ(sent(), (std::vector<std::string>{"update t set a=1", "select 1", "update t set a=2"}));
    connect(";Database=other");
    EXPECT_EQ(server_.sessions.size(), 2U);
}

TEST_F(OdbcStatements, ThatDoNoHarmTwiceAskNoSessionFirstThatWasUsedJustNow) {
    connect()->execute("update t set a=1");
    answer("select a", oneRow({"1"}));
    connect()->open("select a from t");
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("update t set a=2");
    connection->commitTrans();
    EXPECT_EQ(sent(), (std::vector<std::string>{"update t set a=1", "select a from t", "begin transaction",
                                                "update t set a=2", "commit transaction"}));
}

TEST_F(OdbcStatements, AskASessionThatWaitedLong) {
    auto session = takeSession(kString);
    session->heard(OdbcSession::Clock::now() - std::chrono::minutes(1));
    giveSessionBack(kString, std::move(session));
    answer("select a", oneRow({"1"}));
    connect()->open("select a from t");
    EXPECT_EQ(sent(), (std::vector<std::string>{"select 1", "select a from t"}));
}

TEST_F(OdbcStatements, ThatDoNoHarmTwiceRunAgainWhereTheSessionDiedMeanwhile) {
    Answer dead = failed({{"08S01", 0, "[Scripted]Communication link failure"}});
    dead.dies = true;
    for (const bool begins : {false, true}) {
        connect()->execute("update t set a=1");
        const Session& first = server_.sessions.back();
        server_.onStatement = [&](Session& asked, const std::string& sql) {
            if (&asked == &first) return dead;
            return sql.starts_with("select a") ? oneRow({"1"}) : Answer{};
        };
        const auto connection = connect();
        if (begins) {
            connection->beginTrans();
            EXPECT_EQ(sent(), std::vector<std::string>{"begin transaction"});
            connection->commitTrans();
        } else {
            EXPECT_EQ(connection->open("select a from t").rowCount(), 1U);
            EXPECT_EQ(sent(), std::vector<std::string>{"select a from t"});
        }
        EXPECT_FALSE(first.open);
        connection->close();
        dropIdleSessions();
    }
}

// Whatever the words of its failure are.
TEST_F(OdbcStatements, ThatFailAreRunAgainOnlyWhereTheServerAnswersNothingElse) {
    connect()->execute("update t set a=1");
    answer("select a", failed({{"42S02", 208, "[Scripted]Invalid object name 't'"}}));
    EXPECT_EQ(failureOf([this] { connect()->open("select a from t"); }).number(), 208);
    EXPECT_EQ(sent().back(), "select 1");
    EXPECT_EQ(server_.sessions.size(), 1U);
}

TEST_F(OdbcStatements, BehindALostSessionConnectAnew) {
    Answer dead = failed({{"08S01", 0, "[Scripted]Communication link failure"}});
    dead.dies = true;
    answer("update", dead);
    const auto connection = connect();
    EXPECT_EQ(failureOf([&] { connection->execute("update t set a=1"); }).number(), tsql::kConnectionLost);
    connection->execute("delete from t");
    EXPECT_EQ(server_.sessions.size(), 2U);
    EXPECT_EQ(sent(), std::vector<std::string>{"delete from t"});
}

TEST_F(OdbcStatements, MissNothingThatAStatementHadLeftInALostSession) {
    Answer dead = failed({{"08S01", 0, "[Scripted]Communication link failure"}});
    dead.dies = true;
    answer("update", dead);
    answer("delete", dead);
    const auto connection = connect();
    connection->execute("set dateformat dmy");
    EXPECT_EQ(failureOf([&] { connection->execute("update t set a=1"); }).number(), tsql::kConnectionLost);
    EXPECT_EQ(failureOf([&] { connection->execute("delete from t"); }).number(), tsql::kConnectionLost);
    EXPECT_EQ(server_.sessions.size(), 1U);
}

TEST_F(OdbcStatements, ThatLeaveSomethingInTheSessionKeepItsTransaction) {
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("set dateformat dmy");
    answer("select @@trancount", oneRow({"1"}));
    answer("update", failed({{"42S02", 208, "[Scripted]Invalid object name 't'"}}));
    EXPECT_EQ(failureOf([&] { connection->execute("update t set a=1"); }).number(), 208);
    connection->rollbackTrans();
    EXPECT_EQ(sent().back(), "rollback transaction");
}

TEST_F(OdbcStatements, FindNoSessionThatDiedMeanwhile) {
    connect()->execute("update t set a=1");
    Answer dead = failed({{"08S01", 0, "[Scripted]Communication link failure"}});
    dead.dies = true;
    answer("select 1", dead);
    connect()->execute("update t set a=2");
    EXPECT_EQ(server_.sessions.size(), 2U);
    EXPECT_FALSE(server_.sessions.front().open);
}

TEST_F(OdbcStatements, LeaveNoTransactionToTheNextUse) {
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("update t set a=1");
    connection->close();
    EXPECT_EQ(sent().back(), "rollback transaction");
    EXPECT_EQ(idleSessions(), 1U);
    EXPECT_FALSE(connect()->inTransaction());
}

TEST_F(OdbcStatements, ThatTouchTheSessionEndIt) {
    for (const char* sql : {"set dateformat dmy", "use master", "create table #t(a int)", "exec sp_x"}) {
        connect()->execute(sql);
        EXPECT_EQ(idleSessions(), 0U) << sql;
    }
    connect()->execute("create table t(a int)");
    EXPECT_EQ(idleSessions(), 1U);
}

TEST_F(OdbcStatements, WithCharactersThatTheDatabaseLacksAreNotSent) {
    answer("select '²甲'", oneRow({"?甲"}));
    answer("select '甲'", oneRow({"甲"}));
    const auto connection = connect();
    connection->execute("update t set a='甲'");
    connection->execute("update t set a='甲甲'");
    EXPECT_EQ(sent(), (std::vector<std::string>{"select '甲'", "update t set a='甲'", "update t set a='甲甲'"}));
    script_.front().first = "select '²'";
    script_.front().second = oneRow({"?"});
    const Failure refused = failureOf([&] { connection->execute("update t set a='²甲'"); });
    EXPECT_EQ(refused.number(), tsql::kBeyondCodePage);
    EXPECT_NE(refused.text().find("“²”"), std::string::npos) << refused.text();
    EXPECT_EQ(sent().back(), "select '²'");
    connection->execute("update t set a=N'²'");
    EXPECT_EQ(sent().back(), "update t set a=N'²'");
    EXPECT_EQ(failureOf([&] { connection->execute("update t set a='\xE4'"); }).number(), tsql::kNoText);
}

}  // namespace
}  // namespace orvenmod::store::odbc
