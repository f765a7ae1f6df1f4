#include <gtest/gtest.h>

#include "embeddeddatabase.h"
#include "store/sqlite/handlepool.h"
#include "store/sqlite/statementcache.h"

namespace orvenmod::store::sqlite::test {
namespace {

tsql::Shape shapeOf(const std::string& sql) {
    tsql::Shape shape;
    shape.scan(sql);
    return shape;
}

CachedStatement entryOf(const std::string& sql) {
    CachedStatement entry;
    entry.key = shapeOf(sql).key;
    return entry;
}

TEST(StatementCacheTest, FindsAStatementOfTheSameShape) {
    StatementCache cache;
    const std::string other = "select a from t where id=2";
    cache.add(entryOf("select a from t where id=1"));
    EXPECT_NE(cache.find(shapeOf(other)), nullptr);
    const std::string text = "select a from t where id='2'";
    EXPECT_EQ(cache.find(shapeOf(text)), nullptr);
}

TEST(StatementCacheTest, TellsStatementsWithFixedLiteralsApart) {
    StatementCache cache;
    const std::string first = "select a from t order by 1";
    const std::string second = "select a from t order by 2";
    CachedStatement entry = entryOf(first);
    entry.translation.fixedLiterals.push_back({0, "1"});
    const CachedStatement* added = &cache.add(std::move(entry));
    EXPECT_EQ(cache.find(shapeOf(first)), added);
    const auto shape = shapeOf(second);
    if (shape.key == shapeOf(first).key) {
        EXPECT_EQ(cache.find(shape), nullptr);
    }
}

TEST(StatementCacheTest, DropsTheLeastRecentlyUsedBeyondAThousand) {
    StatementCache cache;
    std::vector<std::string> texts;
    for (std::size_t i = 0; i <= StatementCache::kLimit; ++i)
        texts.push_back("select a" + std::to_string(i) + " from t");
    for (std::size_t i = 0; i < StatementCache::kLimit; ++i)
        cache.add(entryOf(texts[i]));
    EXPECT_NE(cache.find(shapeOf(texts[0])), nullptr);
    cache.add(entryOf(texts.back()));
    EXPECT_EQ(cache.size(), StatementCache::kLimit);
    EXPECT_NE(cache.find(shapeOf(texts[0])), nullptr);
    EXPECT_EQ(cache.find(shapeOf(texts[1])), nullptr);
}

using Cache = EmbeddedDatabase;

TEST_F(Cache, HoldsOneStatementForManyValues) {
    {
        const auto connection = connect();
        for (int i = 0; i < 50; ++i) {
            connection->execute("insert into t(id,c) values(" + std::to_string(i) + ",'n" + std::to_string(i) + "')");
        }
        EXPECT_EQ(value(*connection, "select count(*) from t where c='n7'"), "1");
        EXPECT_EQ(value(*connection, "select count(*) from t where c='n8 '"), "1");
    }
    EXPECT_EQ(takeHandle(connectionString())->cache().size(), 2U);
}

TEST_F(Cache, ConvertsEachValueAnew) {
    const auto connection = connect();
    connection->execute("insert into t(id) values('5')");
    EXPECT_EQ(failureOf([&] { connection->execute("insert into t(id) values('x')"); }).number(), 245);
    connection->execute("insert into t(id) values('')");
    EXPECT_EQ(failureOf([&] { connection->execute("insert into t(c) values('1234567890a')"); }).number(), 2628);
    connection->execute("insert into t(c) values('1234567890')");
    EXPECT_EQ(failureOf([&] { connection->execute("insert into t(c) values('一二三四五六')"); }).number(), 2628);
    connection->execute("insert into t(c) values('它''s')");
    EXPECT_EQ(value(*connection, "select count(*) from t where c='它''s'"), "1");
    EXPECT_EQ(value(*connection, "select count(*) from t where c='O''x'"), "0");
}

TEST_F(Cache, FindsPatternsOfEveryKindWithOneShape) {
    const auto connection = connect();
    for (const char* text : {"Abc", "abd ", "客户", "ab%c", "B"}) {
        connection->execute("insert into t(c) values('" + std::string(text) + "')");
    }
    const auto count = [&](const std::string& pattern) {
        return value(*connection, "select count(*) from t where c like '" + pattern + "'");
    };
    EXPECT_EQ(count("ab%"), "3");
    EXPECT_EQ(count("AB_"), "2");
    EXPECT_EQ(count("客%"), "1");
    EXPECT_EQ(count("%b%"), "4");
    EXPECT_EQ(count("z%"), "0");
    EXPECT_EQ(count("abc"), "1");
    EXPECT_EQ(count(""), "0");
    EXPECT_EQ(count("a[bc]_"), "2");
    EXPECT_EQ(count("ab[%]c"), "1");
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
