// The windows on databases that they can't work with.
#include "browser/browsertest.h"
#include "losses.h"

namespace orvenmod::test {
namespace {

namespace tsql = store::tsql;

TEST(BadServer, ADatabaseWithoutTheSuiteIsToldAndShowsNoWindow) {
    BrowserStage stage;
    const ServerDatabase empty;
    stage.script().answer(MessageKind::critical, "对象名 'tblItemClass' 无效。", Answer::ok);
    clsBasicInfo info;
    info.mainInterface(3, "", "", empty.connectionString(), 0);
    stage.finish();
    store::postgres::PostgresStore::dropIdleSessions();
}

TEST(BadServer, AServerThatIsAwayGoesUpToTheHost) {
    BrowserStage stage;
    clsBasicInfo info;
    try {
        info.mainInterface(3, "", "", "Provider=PostgreSQL;Data Source=/nowhere", 0);
        ADD_FAILURE() << "connected";
    } catch (const store::Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kServerUnreachable);
    }
    stage.finish();
}

TEST(BadServer, ARoleThatMayOnlyReadIsToldSoAndStoresNothing) {
    PostgresServer& server = PostgresServer::shared();
    LossStage stage(server);
    server.run(stage.name(), "DO $$ BEGIN CREATE ROLE reader LOGIN; EXCEPTION WHEN duplicate_object THEN NULL; END $$");
    server.run(stage.name(), "GRANT SELECT ON ALL TABLES IN SCHEMA public TO reader");
    appState().gConnStr += ";User ID=reader";
    const std::string before = stage.stored();
    stage.openNew([&](User& user) {
        stage.fillIn(user);
        const Texts typed = values(user);
        const auto told = stage.saveWith(user, 0, {});
        // Nothing has begun yet, so that the rollback is refused as well.
        ASSERT_EQ(told.size(), 2U);
        EXPECT_EQ(told[0].number, tsql::kNoRight);
        EXPECT_EQ(values(user), typed);
    });
    EXPECT_EQ(stage.stored(), before);
}

}  // namespace
}  // namespace orvenmod::test
