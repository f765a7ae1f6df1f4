#include "entry/storefactory.h"

#include <gtest/gtest.h>

#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"

namespace orvenmod {
namespace {

store::Failure failureOf(const std::string& connectionString) {
    try {
        StoreFactory().connect(connectionString);
    } catch (const store::Failure& failure) {
        return failure;
    }
    return {store::FailureKind::other, 0, "no failure"};
}

TEST(StoreFactoryTest, OpensTheEmbeddedStoreByItsProvider) {
    const test::TemporaryFolder folder;
    const auto connection = StoreFactory().connect("provider = sqlite ;Mode=Create;Data Source=" + folder.file("f.db"));
    EXPECT_EQ(connection->open("select 1 as a").rowCount(), 1U);
    connection->close();
    store::sqlite::SqliteStore::dropIdleHandles();
}

TEST(StoreFactoryTest, AsksAServerByDriverSourceOrOleDbProvider) {
    for (const char* string : {"Driver=NoSuchDriver;Server=127.0.0.1", "DSN=no_such_source_of_data",
                               "Provider=SQLOLEDB.1;Data Source=127.0.0.1,1;Initial Catalog=x;User ID=a;Password=b",
                               "Provider=MSOLEDBSQL;Data Source=127.0.0.1,1", "Provider=SQLNCLI11;Server=127.0.0.1,1",
                               "Provider=MSDASQL.1;Extended Properties=\"Driver=NoSuchDriver;Server=127.0.0.1\""}) {
        const store::Failure failure = failureOf(string);
        EXPECT_EQ(failure.kind(), store::FailureKind::connection) << string;
        EXPECT_EQ(failure.text().find("Provider、Driver"), std::string::npos) << string;
    }
}

TEST(StoreFactoryTest, RefusesAStringThatNamesNoStore) {
    for (const char* string : {"", "nonsense", "Data Source=x.db", "Provider=Unknown;Data Source=x"}) {
        const store::Failure failure = failureOf(string);
        EXPECT_EQ(failure.kind(), store::FailureKind::connection) << string;
        EXPECT_NE(failure.text().find("Provider"), std::string::npos) << string;
    }
    EXPECT_NE(failureOf("Language=us_english").text().find("The connection string is not valid"), std::string::npos);
}

}  // namespace
}  // namespace orvenmod
