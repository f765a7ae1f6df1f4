// The functions are made in a database, again over those that are there, and by two at once.
#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <future>
#include <memory>

#include "store/postgres/runtime/bothstores.h"
#include "store/postgres/runtime/runtime.h"
#include "support/postgresserver.h"

namespace orvenmod::store::postgres {
namespace {

using Session = std::unique_ptr<PGconn, decltype(&PQfinish)>;

Session connect(const test::ServerDatabase& database, const std::string& role = test::PostgresServer::kOwner) {
    const std::string text = "host='" + test::PostgresServer::shared().host() + "' user=" + role + " dbname='" +
                             database.name() + "' options='-c client_min_messages=warning'";
    return {PQconnectdb(text.c_str()), &PQfinish};
}

/// The first cell; what failed where something did.
std::string run(const Session& session, const std::string& sql) {
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(session.get(), sql.c_str()), &PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_TUPLES_OK) return status == PGRES_COMMAND_OK ? "done" : PQerrorMessage(session.get());
    if (PQntuples(result.get()) == 0) return "no row";
    return PQgetisnull(result.get(), 0, 0) != 0 ? "null" : PQgetvalue(result.get(), 0, 0);
}

TEST(PostgresRuntime, TellsItsVersionWhereItIsInstalled) {
    const test::ServerDatabase database;
    const Session session = connect(database);
    EXPECT_EQ(run(session, kRuntimeVersionQuery), "null");
    EXPECT_EQ(run(session, runtimeSql()), "done");
    EXPECT_EQ(run(session, kRuntimeVersionQuery), runtimeVersion());
}

TEST(PostgresRuntime, IsReplacedUnderTheViewsAndIndexesThatUseIt) {
    const test::ServerDatabase database;
    const Session session = connect(database);
    ASSERT_EQ(run(session, runtimeSql()), "done");
    ASSERT_EQ(run(session,
                  "CREATE TABLE t (a text); CREATE INDEX i ON t (orven.ts_order(a)); "
                  "CREATE VIEW v AS SELECT orven.ts_text(a, 'text', 'varchar(3)') AS a FROM t; "
                  "INSERT INTO t VALUES ('abcd')"),
              "done");
    EXPECT_EQ(run(session, runtimeSql()), "done");
    EXPECT_EQ(run(session, "SELECT a FROM v"), "abc");
}

TEST(PostgresRuntime, IsMadeOnceByTwoAtOnce) {
    const test::ServerDatabase database;
    const auto install = [&database] { return run(connect(database), runtimeSql()); };
    auto other = std::async(std::launch::async, install);
    EXPECT_EQ(install(), "done");
    EXPECT_EQ(other.get(), "done");
}

TEST(PostgresRuntime, IsForEveryRoleOfTheDatabase) {
    const test::ServerDatabase database;
    ASSERT_EQ(run(connect(database), runtimeSql()), "done");
    const Session superuser = connect(database, test::PostgresServer::kSuperuser);
    const std::string role = "guest_" + database.name();
    ASSERT_EQ(run(superuser, "CREATE ROLE \"" + role + "\"; SET ROLE \"" + role + "\""), "done");
    EXPECT_EQ(run(superuser, "SELECT orven.ts_bigint('12', 'varchar(9)', 'int')"), "12");
    EXPECT_EQ(run(superuser, "RESET ROLE; DROP ROLE \"" + role + "\""), "done");
}

TEST(PostgresRuntime, LetsAConstantWaitThatMayNeverBeAskedFor) {
    const std::string branch = "(SELECT CASE WHEN i > 1 THEN orven.ts_bigint(";
    const std::string rest = ", 'varchar(9)', 'int') ELSE 2 END FROM generate_series(1, 1) AS i)";
    EXPECT_EQ(bothStores().server(branch + "'abc'" + rest), "fails 245 (varchar|abc|int)");
    EXPECT_EQ(bothStores().server(branch + "orven.ts_later('abc'::text)" + rest), "2");
}

TEST(PostgresRuntime, FailsWithTheNumberAndTheArgumentsThatItIsTold) {
    EXPECT_EQ(bothStores().server("orven.ts_fail(8134)"), "fails 8134 ()");
    EXPECT_EQ(bothStores().server("orven.ts_fail(245, 'a', NULL, 'c')"), "fails 245 (a||c)");
    EXPECT_EQ(bothStores().server("orven.ts_fail_as(NULL::bigint, 512)"), "fails 512 ()");
}

}  // namespace
}  // namespace orvenmod::store::postgres
