// The tests' own server, before anything is tested on it.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/postgresserver.h"

namespace orvenmod::test {
namespace {

TEST(PostgresServerOfTheTests, GivesDatabasesThatBelongToNoSuperuser) {
    const ServerDatabase database;
    EXPECT_EQ(database.run("SELECT rolname FROM pg_roles r JOIN pg_database d ON r.oid = datdba AND NOT rolsuper "
                           "WHERE datname = current_database()"),
              PostgresServer::kOwner);
}

TEST(PostgresServerOfTheTests, FillsAModelOnce) {
    int made = 0;
    auto& server = PostgresServer::shared();
    const std::string key = "model_" + server.makeDatabase();
    for (int i = 0; i < 2; ++i) {
        const std::string database = server.makeDatabaseLike(key, [&](const std::string& name) {
            ++made;
            server.run(name, "CREATE TABLE t AS SELECT 5 AS a");
        });
        EXPECT_EQ(server.run(database, "SELECT a FROM t"), "5");
        server.dropDatabase(database);
    }
    EXPECT_EQ(made, 1);
}

TEST(PostgresServerOfTheTests, KeepsWhatWasStoredOverASuddenEnd) {
    PostgresServer server{PostgresServer::Settings()};
    const std::string database = server.makeDatabase();
    server.run(database, "CREATE TABLE t AS SELECT 5 AS a");
    server.stop();
    EXPECT_THROW(server.run(database, "SELECT a FROM t"), std::runtime_error);
    server.start();
    EXPECT_EQ(server.run(database, "SELECT a FROM t"), "5");
}

TEST(PostgresServerOfTheTests, LeavesNoFolderBehind) {
    std::string folder;
    {
        const PostgresServer server{PostgresServer::Settings()};
        folder = server.host();
        EXPECT_TRUE(std::filesystem::exists(folder));
    }
    EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
}  // namespace orvenmod::test
