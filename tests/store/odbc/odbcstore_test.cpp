#include "store/odbc/odbcstore.h"

#include <gtest/gtest.h>

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
    EXPECT_FALSE(failure.text().empty());
    EXPECT_NE(failure.text().front(), '[');
}

TEST(OdbcStoreTest, FailsForADataSourceThatIsNotKnown) {
    EXPECT_EQ(failureOf("DSN=no_such_source_of_data").kind(), FailureKind::connection);
}

TEST(OdbcStoreTest, FailsForAServerThatDoesNotAnswer) {
    // Port 1 of this machine: refused at once.
    for (const char* string : {"Driver=FreeTDS;Server=127.0.0.1;Port=1;UID=a;PWD=b;TDS_Version=7.4",
                               "Provider=SQLOLEDB.1;Data Source=127.0.0.1,1;Initial Catalog=x;User ID=a;Password=b"}) {
        const Failure failure = failureOf(string);
        EXPECT_EQ(failure.kind(), FailureKind::connection) << failure.text();
        EXPECT_FALSE(failure.text().empty());
    }
}

}  // namespace
}  // namespace orvenmod::store::odbc
