// A pooler of connections stands between component and server.
#include "losses.h"

namespace orvenmod::test {
namespace {

namespace tsql = store::tsql;

class Pooler : public ::testing::Test {
protected:
    ~Pooler() override { store::postgres::PostgresStore::dropIdleSessions(); }

    void startPooler(const std::string& mode) {
        appState().gConnStr = stage.connectionString() + ";Port=" + server.startPooler(mode);
    }
    static std::unique_ptr<store::Connection> connect() { return stores().connect(appState().gConnStr); }

    PostgresServer server{PostgresServer::Settings()};
    LossStage stage{server};
};

TEST_F(Pooler, OfSessionsGoesUnnoticed) {
    startPooler("session");
    const std::string before = stage.stored();
    stage.openNew([&](User& user) {
        stage.fillIn(user);
        stage.save(user);
    });
    EXPECT_NE(stage.stored(), before);
    // Several at once, each with its own.
    const auto one = connect();
    const auto other = connect();
    one->beginTrans();
    one->execute("update tblMaxNum set fMaxNum=300 where fTableName='tblItem'");
    EXPECT_EQ(rowsOf(*other, "select fMaxNum from tblMaxNum where fTableName='tblItem'"), (Rows{{"203"}}));
    one->rollbackTrans();
}

TEST_F(Pooler, OfSessionsThatEndsIsToldAsAnyLoss) {
    startPooler("session");
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("update tblMaxNum set fMaxNum=300 where fTableName='tblItem'");
    server.terminateSessions(stage.name());
    try {
        connection->commitTrans();
        ADD_FAILURE() << "committed";
    } catch (const store::Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kCommitUnknown) << failure.text();
    }
    connection->rollbackTrans();
    EXPECT_EQ(rowsOf(*connection, "select fMaxNum from tblMaxNum where fTableName='tblItem'"), (Rows{{"202"}}));
}

TEST_F(Pooler, OfTransactionsIsRefused) {
    startPooler("transaction");
    const auto first = connect();
    try {
        connect();
        ADD_FAILURE() << "two sessions share a connection";
    } catch (const store::Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kSharedSessions);
        EXPECT_EQ(failure.text(),
                  "服务器“" + server.host() +
                      "”前面的连接池会把一个会话的连接交给另一个会话，无法使用。请将它设为会话模式 (session)。");
    }
}

}  // namespace
}  // namespace orvenmod::test
