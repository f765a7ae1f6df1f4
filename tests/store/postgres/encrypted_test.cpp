// Sessions that are encrypted, and a server whose certificate is looked at.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "store/postgres/sessionpool.h"
#include "store/tsql/failurenumbers.h"
#include "suiteserver.h"
#include "support/childprogram.h"

namespace orvenmod::store::postgres::test {
namespace {

using orvenmod::test::ChildProgram;
using orvenmod::test::PostgresServer;

class Encrypted : public ::testing::Test {
protected:
    Encrypted() {
        const std::string subject = " -subj /CN=server -addext subjectAltName=IP:" + address();
        for (const char* name : {"server", "other"})
            server_.command("openssl req -x509 -newkey rsa:2048 -nodes -days 2" + subject + " -keyout data/" + name +
                            ".key -out " + name + ".crt");
        server_.command("cp server.crt data/server.crt && chmod 600 data/server.key && chmod 644 *.crt");
        server_.run("postgres", "ALTER SYSTEM SET ssl = 'on'");
        server_.run("postgres", "SELECT pg_reload_conf()");
        while (server_.run("postgres", "SHOW ssl") != "on") {
        }
    }
    ~Encrypted() override { PostgresStore::dropIdleSessions(); }

    // One that no other test of this machine listens at.
    static std::string address() {
        const int process = ::getpid();
        return "127.77." + std::to_string(process / 250 % 250 + 1) + "." + std::to_string(process % 250 + 1);
    }
    static PostgresServer::Settings settings() {
        PostgresServer::Settings settings;
        settings.lines = {"listen_addresses = '" + address() + "'"};
        return settings;
    }
    /// Trusts the server whose certificate that is.
    std::string trusting(const std::string& name) const {
        return "Provider=PostgreSQL;Data Source=" + address() + ";Initial Catalog=" + database_ +
               ";User ID=suite;sslmode=verify-full;sslrootcert=" + server_.host() + "/" + name + ".crt";
    }

    PostgresServer server_{settings()};
    std::string database_ = server_.makeDatabase();
};

TEST_F(Encrypted, SessionsCarryLongRowsBothWays) {
    const auto connection = PostgresStore().connect(trusting("server"));
    connection->execute("create table t(id int, c varchar(8000))");
    connection->execute("insert into t(id,c) values(1,'" + std::string(8000, 'x') + "')");
    connection->execute("insert into t(id,c) select a.id,a.c from t a cross join (select 1 as n union all select 2) b");
    for (int i = 0; i < 5; ++i)
        connection->execute("insert into t(id,c) select id+1,c from t");
    EXPECT_EQ(connection->open("select c from t").rowCount(), 96U);
    connection->close();
    EXPECT_EQ(PQsslInUse(takeSession(trusting("server"))->native()), 1);
}

TEST_F(Encrypted, SessionsAreNotMadeWithAServerThatIsNotTrusted) {
    const Failure failure = failureOf([&] { PostgresStore().connect(trusting("other")); });
    EXPECT_EQ(failure.number(), tsql::kServerUnreachable);
    EXPECT_NE(failure.text().find("certificate"), std::string::npos) << failure.text();
}

TEST_F(Encrypted, SessionsEndWithTheirProgram) {
    ChildProgram shell(ORVENSQL, {trusting("server")});
    shell.tell("select 1 as a");
    EXPECT_EQ(shell.line(), R"({"columns":["a"],"rows":[["1"]]})");
    shell.tell("!quit");
    EXPECT_EQ(shell.end(), 0);
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
