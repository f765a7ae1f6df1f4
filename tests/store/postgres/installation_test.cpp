// Programs of two versions on one database, and what a connection makes of the settings that it finds.
#include <gtest/gtest.h>

#include <future>

#include "suiteserver.h"

namespace orvenmod::store::postgres::test {
namespace {

using orvenmod::test::PostgresServer;

class Installation : public OnTheServer {
protected:
    Installation() { PostgresStore::dropIdleSessions(); }

    void connectAnew() {
        connect()->execute("insert into t(id) values(1)");
        PostgresStore::dropIdleSessions();
    }
    std::string installed() const { return database_.run(kRuntimeVersionQuery); }
};

constexpr const char* kOfAnother =
    "CREATE OR REPLACE FUNCTION orven.first_text(seen text, v "
    "text) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE RETURN v";
constexpr const char* kFirst = "SELECT orven.first_text('first', 'last')";

TEST_F(Installation, OfAnOlderVersionIsReplaced) {
    for (const char* older : {"1_0123456789abcdef", "0123456789abcdef", "made by hand"}) {
        foreignly(std::string(kOfAnother) + "; COMMENT ON SCHEMA orven IS '" + older + "'");
        connectAnew();
        EXPECT_EQ(installed(), runtimeVersion()) << older;
        EXPECT_EQ(database_.run(kFirst), "first") << older;
    }
}

TEST_F(Installation, OfANewerVersionIsUsedAsItIs) {
    const std::string newer = std::to_string(runtimeNumber(runtimeVersion()) + 1) + "_0123456789abcdef";
    foreignly(std::string(kOfAnother) + "; COMMENT ON SCHEMA orven IS '" + newer + "'");
    connectAnew();
    EXPECT_EQ(installed(), newer);
    EXPECT_EQ(database_.run(kFirst), "last");
}

TEST_F(Installation, OfANewerVersionThatIsBeingMadeIsWaitedForAndKept) {
    const std::string newer = std::to_string(runtimeNumber(runtimeVersion()) + 1) + "_0123456789abcdef";
    foreignly("COMMENT ON SCHEMA orven IS '1_0123456789abcdef'");
    const std::string makes = std::string("BEGIN; ") + kRuntimeLock + kOfAnother + "; COMMENT ON SCHEMA orven IS '" +
                              newer +
                              "'; DO $$ BEGIN WHILE NOT EXISTS (SELECT FROM pg_locks WHERE locktype = 'advisory' AND "
                              "NOT granted) LOOP PERFORM pg_stat_clear_snapshot(); END LOOP; END $$; COMMIT";
    auto other = std::async(std::launch::async, [&] { foreignly(makes); });
    while (database_
               .run("SELECT 1 FROM pg_locks WHERE locktype = 'advisory' AND granted AND database = (SELECT oid "
                    "FROM pg_database WHERE datname = current_database())")
               .empty()) {
    }
    connectAnew();
    other.get();
    EXPECT_EQ(installed(), newer);
    EXPECT_EQ(database_.run(kFirst), "last");
}

TEST_F(Installation, HasANumberForEachTextOfTheFunctions) {
    EXPECT_EQ(runtimeVersion(), "4_1c13bb388d9e411e")
        << "the functions have changed: raise the number beside them, then mend this";
}

TEST_F(Installation, LeavesTheTablesOfARoleOfItsNameWhereOthersAre) {
    database_.run("CREATE ROLE orven LOGIN; GRANT ALL ON SCHEMA orven, public TO orven; GRANT suite TO orven");
    std::string asOrven = connectionString();
    asOrven.replace(asOrven.find("User ID=suite"), 13, "User ID=orven");
    PostgresStore().connect(asOrven)->execute("create table made(id int)");
    PostgresStore::dropIdleSessions();
    EXPECT_EQ(database_.run("SELECT schemaname FROM pg_tables WHERE tablename = 'made'"), "public");
    database_.run("REASSIGN OWNED BY orven TO suite; DROP OWNED BY orven; DROP ROLE orven");
}

TEST(ServerOfAnotherLanguage, IsUnderstoodByItsCodes) {
    PostgresServer::Settings settings;
    settings.lines = {"lc_messages = 'C.utf8'"};
    settings.environment = "LANGUAGE=de";
    PostgresServer server(settings);
    const std::string database = server.makeDatabase();
    try {
        server.run(database, "SELECT 2147483647 + 1");
        ADD_FAILURE() << "no failure";
    } catch (const std::runtime_error& failure) {
        EXPECT_EQ(std::string(failure.what()).find("out of range"), std::string::npos) << failure.what();
    }
    const auto connection = PostgresStore().connect(connectionStringFor(server, database));
    connection->execute("create table t(i int, s smallint, b bigint, f float, d decimal(38,0))");
    connection->execute("insert into t values(2147483647,32767,9223372036854775807,1e308," + std::string(38, '9') +
                        ")");
    const auto fails = [&](const std::string& sql) { return failureOf([&] { connection->open(sql); }).text(); };
    const auto overflow = [](const std::string& type) {
        return "将 expression 转换为数据类型 " + type + " 时出现算术溢出错误。";
    };
    EXPECT_EQ(fails("select i+1 from t"), overflow("int"));
    EXPECT_EQ(fails("select i*s from t"), overflow("int"));
    EXPECT_EQ(fails("select b+i from t"), overflow("bigint"));
    EXPECT_EQ(fails("select f*10 from t"), overflow("float"));
    EXPECT_EQ(fails("select d*d from t"), overflow("numeric"));
    PostgresStore::dropIdleSessions();
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
