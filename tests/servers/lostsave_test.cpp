// A session of the server is ended while an item is saved: by an administrator, a network, a server that ran out of
// memory.
#include <set>

#include "losses.h"

namespace orvenmod::test {
namespace {

namespace tsql = store::tsql;

class LostSave : public ::testing::Test {
protected:
    void endSessions() const { PostgresServer::shared().terminateSessions(stage.name()); }

    LossStage stage{PostgresServer::shared()};
};

TEST_F(LostSave, BehindAnyOperationIsToldAtMostOnceStoresNothingHalfAndCanBeDoneAgain) {
    const Texts operations = stage.operationsOfASave();
    ASSERT_GT(operations.size(), 8U);
    const auto begin = std::find(operations.begin(), operations.end(), "begin") - operations.begin() + 1;
    const std::string before = stage.stored();
    std::set<int> numbers;
    for (int n = 1; n < static_cast<int>(operations.size()); ++n) {
        SCOPED_TRACE("behind " + std::to_string(n) + ": " + operations[static_cast<std::size_t>(n - 1)]);
        stage.openNew([&](User& user) {
            stage.fillIn(user);
            const Texts typed = values(user);
            // What is lost where no rows of a transaction are is replaced before anybody needs it.
            if (n <= begin) user.answer(MessageKind::information, LossStage::kSaved);
            const auto told = stage.saveWith(user, n, [this] { endSessions(); });
            if (n <= begin) {
                EXPECT_TRUE(told.empty()) << told[0].text;
                return;
            }
            ASSERT_EQ(told.size(), 1U);
            const bool atCommit = told[0].operation == "commit";
            EXPECT_EQ(told[0].number, atCommit ? tsql::kCommitUnknown : tsql::kConnectionLost) << told[0].text;
            numbers.insert(told[0].number);
            EXPECT_EQ(stage.stored(), before);
            EXPECT_EQ(values(user), typed);
            stage.save(user);
        });
        EXPECT_NE(stage.stored(), before);
        EXPECT_EQ(stage.connectionsAlive(), 0);
        stage.removeNewItems();
    }
    EXPECT_EQ(numbers, (std::set<int>{tsql::kConnectionLost, tsql::kCommitUnknown}));
}

TEST_F(LostSave, BetweenTwoCommandsGoesUnnoticed) {
    const std::string before = stage.stored();
    stage.openNew([&](User& user) {
        stage.fillIn(user);
        endSessions();
        stage.save(user);
    });
    EXPECT_NE(stage.stored(), before);
}

}  // namespace
}  // namespace orvenmod::test
