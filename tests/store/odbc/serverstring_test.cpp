#include "store/odbc/serverstring.h"

#include <gtest/gtest.h>

#include "store/connectionstring.h"
#include "store/odbc/odbcfetch.h"

namespace orvenmod::store::odbc {
namespace {

TEST(ServerString, OfOdbcStaysAsItIs) {
    EXPECT_EQ(serverString("Driver={SQL Server};Server=a;x=1"), "Driver={SQL Server};Server=a;x=1");
    EXPECT_EQ(serverString("DSN=suite;UID=sa"), "DSN=suite;UID=sa");
}

TEST(ServerString, OfOleDbIsOneForFreeTds) {
    const ConnectionString mapped(serverString(
        "Provider=SQLOLEDB.1;Persist Security Info=True;User ID=sa;Password=a;Initial Catalog=suite;Data Source=host"));
    EXPECT_EQ(mapped.get("Driver"), "FreeTDS");
    EXPECT_EQ(mapped.get("Server"), "host");
    EXPECT_EQ(mapped.get("Port"), "1433");
    EXPECT_EQ(mapped.get("Database"), "suite");
    EXPECT_EQ(mapped.get("UID"), "sa");
    EXPECT_EQ(mapped.get("PWD"), "a");
    EXPECT_EQ(mapped.get("ClientCharset"), "UTF-8");
    EXPECT_FALSE(mapped.has("Provider"));
}

TEST(ServerString, TakesPortAndInstanceOutOfTheDataSource) {
    EXPECT_EQ(ConnectionString(serverString("Provider=SQLOLEDB;Data Source=host,1500")).get("Port"), "1500");
    const ConnectionString instance(serverString("Provider=SQLOLEDB;Data Source=host\\suite"));
    EXPECT_EQ(instance.get("Server"), "host\\suite");
    EXPECT_FALSE(instance.has("Port"));
    EXPECT_EQ(ConnectionString(serverString("Provider=SQLOLEDB;Data Source=(local)")).get("Server"), "localhost");
}

TEST(ServerString, KeepsAPasswordWithSigns) {
    const std::string mapped = serverString("Provider=SQLOLEDB;Data Source=h;Password={a;b}}c}");
    EXPECT_EQ(ConnectionString(mapped).get("PWD"), "a;b}c");
}

TEST(PlainDecimal, HasNoZerosAtItsEnd) {
    const auto plain = [](std::string_view text) {
        std::string room;
        return std::string(plainDecimal(text, room));
    };
    EXPECT_EQ(plain("12.5000"), "12.5");
    EXPECT_EQ(plain("10.0000"), "10");
    EXPECT_EQ(plain(".5000"), "0.5");
    EXPECT_EQ(plain("-.5"), "-0.5");
    EXPECT_EQ(plain("-.0000"), "0");
    EXPECT_EQ(plain("-0.00"), "0");
    EXPECT_EQ(plain("0.0000"), "0");
    EXPECT_EQ(plain("100"), "100");
    EXPECT_EQ(plain("922337203685477.5807"), "922337203685477.5807");
}

}  // namespace
}  // namespace orvenmod::store::odbc
