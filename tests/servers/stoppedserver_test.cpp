// The whole server stops at once, as for a loss of power, while an item is saved, and comes back.
#include "losses.h"

namespace orvenmod::test {
namespace {

namespace tsql = store::tsql;

const std::string kNoConnection = "对象变量或 With 块变量未设置";

class StoppedServer : public ::testing::Test {
protected:
    // What is told of it while it is down.
    std::string failureToConnect() {
        try {
            stores().connect(stage.connectionString());
        } catch (const store::Failure& failure) {
            EXPECT_EQ(failure.number(), tsql::kServerUnreachable);
            return failure.text();
        }
        return "connected";
    }

    PostgresServer server{PostgresServer::Settings()};
    LossStage stage{server};
};

TEST_F(StoppedServer, InMidSaveLeavesNothingHalfStoredAndWorksAgainWhenItIsBack) {
    const Texts operations = stage.operationsOfASave();
    const int begin =
        static_cast<int>(std::find(operations.begin(), operations.end(), "begin") - operations.begin()) + 1;
    const int commit = static_cast<int>(operations.size());
    const std::string before = stage.stored();
    // In the middle of the rows, and where only the commit is left.
    for (const int n : {(begin + commit) / 2, commit - 1}) {
        SCOPED_TRACE("behind " + std::to_string(n) + ": " + operations[static_cast<std::size_t>(n - 1)]);
        stage.openNew([&](User& user) {
            stage.fillIn(user);
            const Texts typed = values(user);
            const auto told = stage.saveWith(user, n, [this] { server.stop(); });
            ASSERT_EQ(told.size(), 1U);
            EXPECT_EQ(told[0].number, n == commit - 1 ? tsql::kCommitUnknown : tsql::kConnectionLost);
            user.answer(MessageKind::critical, failureToConnect());
            user.answer(MessageKind::critical, kNoConnection);
            user.clickTool("Save");
            server.start();
            EXPECT_EQ(stage.stored(), before);
            EXPECT_EQ(values(user), typed);
            stage.save(user);
            EXPECT_NE(stage.stored(), before);
        });
        stage.removeNewItems();
    }
}

TEST_F(StoppedServer, ThatIsStartedAgainBetweenTwoCommandsGoesUnnoticed) {
    const std::string before = stage.stored();
    stage.openNew([&](User& user) {
        stage.fillIn(user);
        server.stop();
        server.start();
        stage.save(user);
    });
    EXPECT_NE(stage.stored(), before);
}

}  // namespace
}  // namespace orvenmod::test
