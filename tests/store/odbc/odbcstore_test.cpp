// Connecting with the drivers of this machine to what is no server.
#include "store/odbc/odbcstore.h"

#include <gtest/gtest.h>

#include "store/tsql/failurenumbers.h"
#include "support/localport.h"

namespace orvenmod::store::odbc {
namespace {

Failure failureOf(const std::string& connectionString) {
    try {
        OdbcStore().connect(connectionString);
    } catch (const Failure& failure) {
        return failure;
    }
    return {FailureKind::other, 0, "no failure"};
}

TEST(OdbcStoreTest, FailsWithoutTheDriver) {
    const Failure failure = failureOf("Driver=NoSuchDriver;Server=127.0.0.1");
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_EQ(failure.text(), "没有安装 ODBC 驱动程序“NoSuchDriver”。");
    EXPECT_EQ(failureOf("Driver=/nowhere/libnone.so;Server=127.0.0.1").kind(), FailureKind::connection);
}

TEST(OdbcStoreTest, FailsForADataSourceThatIsNotKnown) {
    const Failure failure = failureOf("DSN=no_such_source_of_data;Language=us_english");
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_EQ(failure.text(), "There is no ODBC data source named 'no_such_source_of_data'.");
}

TEST(OdbcStoreTest, FailsForAServerThatDoesNotAnswer) {
    // Port 1 of this machine: refused at once.
    for (const char* string : {"Driver=FreeTDS;Server=127.0.0.1;Port=1;UID=a;PWD=b;TDS_Version=7.4",
                               "Provider=SQLOLEDB.1;Data Source=127.0.0.1,1;Initial Catalog=x;User ID=a;Password=b"}) {
        const Failure failure = failureOf(string);
        EXPECT_EQ(failure.number(), tsql::kServerUnreachable) << failure.text();
        EXPECT_NE(failure.text().find("127.0.0.1"), std::string::npos);
    }
}

TEST(OdbcStoreTest, FailsInTimeForAHostThatSaysNothing) {
    const orvenmod::test::LocalPort host;
    const std::string place = "127.0.0.1," + host.port();
    const Failure failure =
        failureOf("Provider=SQLOLEDB;Data Source=" + place + ";User ID=a;Password=b;Connect Timeout=1");
    EXPECT_EQ(failure.number(), tsql::kServerSilent);
    EXPECT_EQ(failure.text(), "服务器“" + place + "”在 1 秒内没有应答。请检查服务器地址和网络。");
}

}  // namespace
}  // namespace orvenmod::store::odbc
