#include "store/postgres/serveraddress.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "store/failure.h"
#include "store/tsql/failurenumbers.h"
#include "support/temporary.h"

namespace orvenmod::store::postgres {
namespace {

// What the client library gets under the name; of two, the later.
std::string parameter(const std::string& connectionString, const std::string& name) {
    std::string value = "none";
    for (const auto& [key, text] : ServerAddress::parse(connectionString).parameters) {
        if (key == name) value = text;
    }
    return value;
}

const std::string kPlain = "Provider=PostgreSQL;Data Source=db;Initial Catalog=suite;User ID=li;Password=geheim";

TEST(ServerAddressOfAString, HasTheSystemsOwnKeys) {
    EXPECT_EQ(parameter(kPlain, "host"), "db");
    EXPECT_EQ(parameter(kPlain, "dbname"), "suite");
    EXPECT_EQ(parameter(kPlain, "user"), "li");
    EXPECT_EQ(parameter(kPlain, "password"), "geheim");
    EXPECT_EQ(parameter(kPlain + ";Port=5433", "port"), "5433");
    EXPECT_EQ(parameter(kPlain + ";Provider=PostgreSQL", "provider"), "none");
}

TEST(ServerAddressOfAString, PassesFurtherKeysOn) {
    EXPECT_EQ(parameter(kPlain + ";SSLMode=verify-full", "sslmode"), "verify-full");
    EXPECT_EQ(parameter(kPlain + ";application_name=till", "application_name"), "till");
    EXPECT_EQ(parameter(kPlain + ";connect_timeout=3", "connect_timeout"), "3");
}

TEST(ServerAddressOfAString, RefusesAKeyThatNobodyKnows) {
    try {
        ServerAddress::parse("Colour=red;" + kPlain);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kBadConnectionString);
        EXPECT_EQ(failure.text(), "连接字符串不正确: 不认识 colour。");
    }
}

TEST(ServerAddressOfAString, TellsNothingOfAPasswordThatASemicolonCuts) {
    for (const char* behind : {";secret=too", ";sslpassword=a;secret=too"}) {
        try {
            ServerAddress::parse(kPlain + behind);
            FAIL();
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.text(), "连接字符串不正确: 密码之后的一段不可识别，含“;”的密码须加引号。");
        }
    }
}

TEST(ServerAddressOfAString, RefusesAPartThatIsNoKeyAndTellsNothingOfIt) {
    for (const char* loose : {";sslmode require", ";secret"}) {
        try {
            ServerAddress::parse(kPlain + loose);
            FAIL() << loose;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.text(), "连接字符串不正确: 其中有一段没有“=”。");
        }
    }
    EXPECT_NO_THROW(ServerAddress::parse(kPlain + "; ;"));
}

TEST(ServerAddressOfAString, NeedsAServer) {
    EXPECT_THROW(ServerAddress::parse("Provider=PostgreSQL;Initial Catalog=suite"), Failure);
    EXPECT_NO_THROW(ServerAddress::parse("Provider=PostgreSQL;service=suite"));
}

TEST(ServerAddressOfAString, WaitsAsLongAsItsTimeoutsSay) {
    EXPECT_EQ(parameter(kPlain, "connect_timeout"), "15");
    EXPECT_EQ(parameter(kPlain + ";Connect Timeout=4", "connect_timeout"), "4");
    EXPECT_EQ(ServerAddress::parse(kPlain).busyTimeout, std::chrono::seconds(5));
    EXPECT_THROW(ServerAddress::parse(kPlain + ";Busy Timeout=soon"), Failure);
}

// The environment variable of the test's own process.
class Variable {
public:
    Variable(const char* name, const std::string& value) : name_(name) { ::setenv(name, value.c_str(), 1); }
    ~Variable() { ::unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
};

TEST(ServerAddressOfAString, LeavesWhatTheServiceFileSays) {
    const orvenmod::test::TemporaryFolder folder;
    std::ofstream(folder.file("services")) << "[till]\nhost=db1,db2\ndbname=suite\nconnect_timeout=7\n"
                                              "tcp_user_timeout=9000\nkeepalives_idle=70\n";
    const Variable file("PGSERVICEFILE", folder.file("services"));
    const std::string till = "Provider=PostgreSQL;service=till";
    for (const char* set : {"connect_timeout", "tcp_user_timeout", "keepalives_idle"})
        EXPECT_EQ(parameter(till, set), "none") << set;
    EXPECT_EQ(ServerAddress::parse(till).connectTimeout, std::chrono::seconds(7));
    EXPECT_EQ(parameter(till, "keepalives_count"), "3") << "what it doesn't say is ours";
    EXPECT_EQ(parameter(till, "target_session_attrs"), "read-write") << "of its hosts too";
    EXPECT_EQ(parameter(till + ";Connect Timeout=4", "connect_timeout"), "4") << "the string goes before it";
    EXPECT_EQ(parameter(till + ";tcp_user_timeout=5", "tcp_user_timeout"), "5");
    std::ofstream(folder.file("services")) << "[till]\nhost=db1,db2\ntarget_session_attrs=prefer-standby\n";
    EXPECT_EQ(parameter(till, "target_session_attrs"), "none");
    const Variable service("PGSERVICE", "till");
    EXPECT_EQ(parameter("Provider=PostgreSQL;Data Source=db1,db2", "target_session_attrs"), "none");
}

TEST(ServerAddressOfAString, LeavesWhatTheEnvironmentSays) {
    const Variable timeout("PGCONNECT_TIMEOUT", "8");
    const Variable servers("PGTARGETSESSIONATTRS", "standby");
    const std::string two = "Provider=PostgreSQL;Data Source=db1,db2";
    EXPECT_EQ(parameter(two, "connect_timeout"), "none");
    EXPECT_EQ(ServerAddress::parse(two).connectTimeout, std::chrono::seconds(8));
    EXPECT_EQ(parameter(two, "target_session_attrs"), "none");
    EXPECT_EQ(parameter(two + ";Connect Timeout=4", "connect_timeout"), "4");
}

TEST(ServerAddressOfAString, KnowsTheLibrarysOwnTimeout) {
    EXPECT_EQ(ServerAddress::parse(kPlain + ";connect_timeout=3").connectTimeout, std::chrono::seconds(3));
    EXPECT_EQ(ServerAddress::parse(kPlain + ";connect_timeout=0").connectTimeout, std::chrono::seconds(0));
    EXPECT_EQ(ServerAddress::parse(kPlain).connectTimeout, std::chrono::seconds(15));
}

TEST(ServerAddressOfAString, WritesToThePrimaryOfSeveralHosts) {
    const std::string two = "Provider=PostgreSQL;Data Source=db1,db2;Initial Catalog=suite";
    EXPECT_EQ(parameter(two, "host"), "db1,db2");
    EXPECT_EQ(parameter(two, "target_session_attrs"), "read-write");
    EXPECT_EQ(parameter(two + ";target_session_attrs=any", "target_session_attrs"), "any");
    EXPECT_EQ(parameter(kPlain, "target_session_attrs"), "none");
}

}  // namespace
}  // namespace orvenmod::store::postgres
