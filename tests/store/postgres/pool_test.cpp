#include <gtest/gtest.h>

#include "store/postgres/sessionpool.h"
#include "suiteserver.h"

namespace orvenmod::store::postgres::test {
namespace {

class Sessions : public OnTheServer {
protected:
    std::string sessions() const {
        return database_.run(
            "SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
            "usename = 'suite'");
    }
};

TEST_F(Sessions, AreGivenAgain) {
    for (int i = 0; i < 5; ++i)
        connect()->execute("insert into t(id) values(1)");
    EXPECT_EQ(sessions(), "1");
}

TEST_F(Sessions, KeepTheirPreparedStatements) {
    connect()->execute("update t set n=1 where id=5");
    EXPECT_EQ(takeSession(connectionString())->cache().size(), 1U);
}

TEST_F(Sessions, LetPreparedStatementsGoBehindOneThatFailedToo) {
    connect()->execute("update t set n=1 where id=5");
    const auto session = takeSession(connectionString());
    session->cache().clear();
    session->queueText("SELECT 1/0");
    EXPECT_NE(session->send().failure(), nullptr);
    session->queueText("SELECT 1");
    session->send();
    session->queueText("SELECT count(*) FROM pg_prepared_statements WHERE NOT from_sql AND statement LIKE '%\"t\"%'");
    EXPECT_EQ(textOf(session->send().results.at(0).get(), 0, 0), "0");
}

TEST_F(Sessions, OfAnotherStringAreOthers) {
    connect()->close();
    EXPECT_EQ(takeSession(connectionString(";Language=us_english"))->address().language, tsql::Language::english);
}

TEST_F(Sessions, ComeBackWithoutATransaction) {
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("insert into t(id) values(1)");
    connection->close();
    EXPECT_EQ(database_.run("SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
                            "state LIKE 'idle in%'"),
              "0");
    EXPECT_EQ(value(*connect(), "select count(*) from t"), "0");
}

TEST_F(Sessions, ForgetTheProgressCallback) {
    const auto connection = connect();
    connection->setProgress([] {});
    connection->close();
    EXPECT_FALSE(takeSession(connectionString())->progress());
}

TEST_F(Sessions, EndedByTheServerAreNotGivenOut) {
    connect()->execute("insert into t(id) values(1)");
    terminateSessions();
    EXPECT_EQ(value(*connect(), "select count(*) from t"), "1");
}

TEST_F(Sessions, ServeTwoUsesAtOnce) {
    const auto first = connect();
    const auto second = connect();
    first->execute("insert into t(id) values(1)");
    EXPECT_EQ(value(*second, "select count(*) from t"), "1");
}

TEST_F(Sessions, EndOnDemand) {
    connect()->close();
    EXPECT_EQ(sessions(), "1");
    PostgresStore::dropIdleSessions();
    // The server takes its time to notice.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (sessions() != "0" && std::chrono::steady_clock::now() < deadline) {
    }
    EXPECT_EQ(sessions(), "0");
}

TEST(SessionsOfAServer, ThatStartedAgainCostTheNextCommandAReconnect) {
    orvenmod::test::PostgresServer server{orvenmod::test::PostgresServer::Settings()};
    const std::string text = connectionStringFor(server, server.makeDatabase());
    PostgresStore().connect(text)->execute("create table t(id int)");
    server.stop();
    EXPECT_EQ(failureOf([&] { PostgresStore().connect(text); }).number(), tsql::kServerUnreachable);
    server.start();
    EXPECT_EQ(PostgresStore().connect(text)->execute("insert into t(id) values(1)"), 1);
    PostgresStore::dropIdleSessions();
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
