#include "store/postgres/serveraddress.h"

#include <gtest/gtest.h>

#include "store/failure.h"
#include "store/tsql/failurenumbers.h"

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
        ServerAddress::parse(kPlain + ";Colour=red");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kBadConnectionString);
        EXPECT_EQ(failure.text(), "连接字符串不正确: 不认识 colour。");
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

TEST(ServerAddressOfAString, WritesToThePrimaryOfSeveralHosts) {
    const std::string two = "Provider=PostgreSQL;Data Source=db1,db2;Initial Catalog=suite";
    EXPECT_EQ(parameter(two, "host"), "db1,db2");
    EXPECT_EQ(parameter(two, "target_session_attrs"), "read-write");
    EXPECT_EQ(parameter(two + ";target_session_attrs=any", "target_session_attrs"), "any");
    EXPECT_EQ(parameter(kPlain, "target_session_attrs"), "none");
}

}  // namespace
}  // namespace orvenmod::store::postgres
