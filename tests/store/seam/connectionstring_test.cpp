#include "store/connectionstring.h"

#include <gtest/gtest.h>

namespace orvenmod::store {
namespace {

TEST(ConnectionString, FindsAKeyWithoutRegardToCaseAndBlanks) {
    const ConnectionString string(" Provider = SQLite ; data source=/tmp/a b.db;");
    EXPECT_EQ(string.get("PROVIDER"), "SQLite");
    EXPECT_EQ(string.get("Data Source"), "/tmp/a b.db");
}

TEST(ConnectionString, GivesTheFallbackForAKeyThatIsMissing) {
    const ConnectionString string("a=1");
    EXPECT_EQ(string.get("b", "none"), "none");
    EXPECT_FALSE(string.has("b"));
    EXPECT_TRUE(string.has("A"));
}

TEST(ConnectionString, TakesTheLaterOfTwo) { EXPECT_EQ(ConnectionString("a=1;A=2").get("a"), "2"); }

TEST(ConnectionString, ReadsAValueInBracesWithItsSemicolons) {
    EXPECT_EQ(ConnectionString("Driver={SQL Server};Password={a;b}}c};x=1").get("Password"), "a;b}c");
    EXPECT_EQ(ConnectionString("Driver={SQL Server};Password={a;b}}c};x=1").get("x"), "1");
}

TEST(ConnectionString, ReadsAValueInQuotes) {
    EXPECT_EQ(ConnectionString("Password=\"a;\"\"b\";x=1").get("password"), "a;\"b");
    EXPECT_EQ(ConnectionString("Password='a;b';x=1").get("x"), "1");
}

TEST(ConnectionString, KeepsAnEqualsSignWithinAValue) { EXPECT_EQ(ConnectionString("a=b=c").get("a"), "b=c"); }

TEST(ConnectionString, TakesWhatIsNoPairForNothing) {
    EXPECT_FALSE(ConnectionString("").has("a"));
    EXPECT_FALSE(ConnectionString("nonsense").has("nonsense"));
    EXPECT_EQ(ConnectionString(";;a=1;;").get("a"), "1");
    EXPECT_EQ(ConnectionString("a={never closed").get("a"), "never closed");
    EXPECT_EQ(ConnectionString("a=").get("a", "fallback"), "");
}

}  // namespace
}  // namespace orvenmod::store
