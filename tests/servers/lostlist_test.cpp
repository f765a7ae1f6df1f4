// A session of the server is ended under the list.
#include "browser/browsertest.h"
#include "losses.h"
#include "store/server/lostconnection.h"
#include "store/tsql/messages.h"

namespace orvenmod::test {
namespace {

namespace server = store::server;
namespace tsql = store::tsql;

class LostList : public BrowserTest {
protected:
    LostList() : name_(databaseOf(stage.connectionString())) {}
    ~LostList() override { store::postgres::PostgresStore::dropIdleSessions(); }

    void endSessions() const { PostgresServer::shared().terminateSessions(name_); }
    // So many goods more, below category 14.
    void addMany(int goods) const {
        const std::string each = " FROM generate_series(1001, " + std::to_string(1000 + goods) + ") i";
        PostgresServer::shared().run(
            name_,
            "INSERT INTO tblitem(fitemid, fnumber, fname, fitemclassid, fparentid, fisdetail, fdepth, fislock, "
            "fnbnumber) SELECT i, '02.' || i, 'item ' || i, 3, 14, 1, 2, 0, '.14.' || i || '.'" +
                each);
        PostgresServer::shared().run(
            name_, "INSERT INTO icitem(fitemid, fnumber, fname) SELECT i, '02.' || i, 'item ' || i" + each);
        PostgresServer::shared().run(name_, "ANALYZE");
    }

    std::string name_;
};

TEST_F(LostList, BetweenTwoCommandsGoesUnnoticed) {
    stage.open(kManagement, [this](User& user) {
        user.clickNode("tv1", "D12");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        endSessions();
        user.clickNode("tv1", "D14");
        EXPECT_EQ(codes(user), (Texts{"02.001"}));
    });
}

TEST_F(LostList, WhileItArrivesIsToldOnceKeepsTheOldOneAndCanBeDoneAgain) {
    constexpr int kMany = 60000;
    addMany(kMany);
    const std::string lost = server::lostConnection(PostgresServer::shared().host(), server::Loss::killed,
                                                    "terminating connection due to administrator command",
                                                    server::Outcome::undone, tsql::Language::chinese)
                                 .text();
    stage.open(kManagement, [&](User& user) {
        user.clickNode("tv1", "D12");
        int losses = 0;
        stage.whileAwaiting([&] {
            if (losses++ == 0) endSessions();
        });
        user.answer(MessageKind::critical, lost);
        user.clickNode("tv1", "D14");
        EXPECT_GT(losses, 0);
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        stage.whileAwaiting({});
        user.clickNode("tv1", "D12");
        user.clickNode("tv1", "D14");
        EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), kMany + 2) << "with the heading";
    });
}

}  // namespace
}  // namespace orvenmod::test
