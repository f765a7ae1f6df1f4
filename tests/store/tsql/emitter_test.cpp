#include <gtest/gtest.h>

#include "store/tsql/fakecatalog.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {
namespace {

TEST(Emitter, WritesLiteralsAsParameters) {
    const Translation insert = translated("insert into t(id,n) values(9,'')");
    EXPECT_EQ(insert.statements.at(0), R"(INSERT INTO "t"("id", "n") VALUES (?1, ?2))");
    EXPECT_EQ(insert.kind, StatementKind::change);
    EXPECT_EQ(insert.table, "t");
    EXPECT_TRUE(insert.cacheable);
}

TEST(Emitter, LeavesNumbersBareInComparisons) {
    EXPECT_EQ(emitted("delete from t where id=5 and n>=2.5"),
              R"(DELETE FROM "t" AS "t" WHERE (("t"."id" = ?1) AND ("t"."n" >= ?2)))");
    EXPECT_EQ(emitted("select t.id from t,u where t.id=u.id"),
              R"(SELECT "t"."id" FROM "t" AS "t", "u" AS "u" WHERE ("t"."id" = "u"."id"))");
}

TEST(Emitter, ComparesTextsInTheFormOfTheIndexes) {
    const Translation query = translated("select id from u where c='x'");
    EXPECT_EQ(query.statements.at(0), R"(SELECT "u"."id" FROM "u" AS "u" WHERE (rtrim("u"."c") COLLATE NOCASE = ?1))");
    EXPECT_EQ(query.parameters.at(0).use, Parameter::Use::trimmed);
}

TEST(Emitter, BoundsAPatternThatHasAPlainBeginning) {
    const Translation query = translated("select id from u where c like '.12.%'");
    ASSERT_EQ(query.parameters.size(), 3U);
    const std::string& sql = query.statements.at(0);
    EXPECT_NE(sql.find(R"(rtrim("u"."c") COLLATE NOCASE >= )"), std::string::npos);
    EXPECT_NE(sql.find(R"(rtrim("u"."c") COLLATE NOCASE < )"), std::string::npos);
    EXPECT_NE(sql.find("ts_like"), std::string::npos);
}

TEST(Emitter, DoesNotBoundOtherPatterns) {
    EXPECT_EQ(translated("select id from u where c like '%x'").parameters.size(), 1U);
    EXPECT_EQ(translated("select id from u where c not like 'x%'").parameters.size(), 1U);
    EXPECT_EQ(translated("select id from u where c like 'x!%' escape '!'").parameters.size(), 2U);
}

class CodeSearch : public ::testing::Test {
protected:
    CodeSearch() {
        ObjectInfo table = tableOf("k(p int, q int, c varchar(10), o varchar(10), id int)");
        table.codeIndexes = {{{"p", "q"}, "c"}};
        catalog_.add(table);
    }
    bool isServed(const std::string& sql) const {
        return translateForSqlite(sql, catalog_).statements.at(0).find("GLOB") != std::string::npos;
    }

    FakeCatalog catalog_;
};

TEST_F(CodeSearch, readsTheGreatestDigitsAndTheRowsOfOtherSigns) {
    const Translation query = translateForSqlite("select max(c) from k where p=7 and q=8 and len(c)=3", catalog_);
    const std::string condition =
        R"(WHERE ((("k"."p" = ?1) AND ("k"."q" = ?2)) AND (length(rtrim("k"."c")) = ?3)) AND )"
        R"(("k"."c" GLOB '*[^0-9]*'))";
    EXPECT_EQ(query.statements.at(0),
              R"(SELECT max("k"."c" COLLATE ts_order) FROM (SELECT max("k"."c") AS "c" FROM "k" AS "k" )" + condition +
                  R"( = 0 UNION ALL SELECT "k"."c" FROM "k" AS "k" )" + condition + R"( > 0) AS "k")");
    EXPECT_EQ(query.parameters.size(), 3U);
}

TEST_F(CodeSearch, isMadeWhereTheIndexServesIt) {
    for (const char* sql : {"select isnull(max(cast(c as varchar(4))),0) as m from k where q=8 and p=7 and len(c)=3",
                            "select max(c) from k as a where 7=a.p and a.q='8' and 3=len(a.c) and id>9",
                            "select id from k where c=(select max(c) from k where p=7 and q=8 and len(c)=3)"})
        EXPECT_TRUE(isServed(sql)) << sql;
}

TEST_F(CodeSearch, isNotMadeWhereTheIndexDoesNotServeIt) {
    for (const char* sql :
         {"select max(c) from k where p=7 and len(c)=3", "select max(c) from k where p=7 and q=8",
          "select max(c) from k where p=7 and q>8 and len(c)=3", "select max(c) from k where (p=7 or q=8) and len(c)=3",
          "select max(c) from k where p=7 and q=8 and len(o)=3", "select max(o) from k where p=7 and q=8 and len(o)=3",
          "select min(c) from k where p=7 and q=8 and len(c)=3",
          "select max(c),max(id) from k where p=7 and q=8 and len(c)=3",
          "select max(c+o) from k where p=7 and q=8 and len(c)=3",
          "select max(cast(c as int)) from k where p=7 and q=8 and len(c)=3",
          "select max(c) from k where p=7 and q=8 and len(c)=3 group by id",
          "select max(c) from k where p=7 and q=8 and len(c)=3 having max(c)>'1'",
          "select max(c) from k where p=7 and q=8 and len(c)=3 order by max(id)",
          "select max(k.c) from k,u where k.p=7 and k.q=8 and len(k.c)=3",
          "create view x as select max(c) as m from k where p=7 and q=8 and len(c)=3"})
        EXPECT_FALSE(isServed(sql)) << sql;
}

TEST(Emitter, ConvertsALiteralOnlyWhenItIsNeededWhereItMayNotBe) {
    EXPECT_EQ(emitted("select isnull(n,'abc') from t"),
              R"(SELECT ifnull("t"."n", ts_cast(?1, 'varchar(8000)', 'int')) FROM "t" AS "t")");
    EXPECT_EQ(emitted("select isnull(c,'') from t"), R"(SELECT ifnull("t"."c", ?1) FROM "t" AS "t")");
}

TEST(Emitter, UsesOneParameterForOneLiteral) {
    EXPECT_EQ(translated("select id from t order by case when n>5 then 0 else 1 end").parameters.size(), 3U);
    EXPECT_EQ(translated("select n+1 from t order by 1").parameters.size(), 1U);
}

TEST(Emitter, GroupsDistinctTextsByTheirComparedForm) {
    EXPECT_EQ(emitted("select distinct c from u"),
              R"(SELECT "u"."c" FROM "u" AS "u" GROUP BY rtrim("u"."c") COLLATE NOCASE)");
    EXPECT_EQ(emitted("select distinct id from u"), R"(SELECT DISTINCT "u"."id" FROM "u" AS "u")");
}

TEST(Emitter, PutsLimitedBranchesOfAUnionInBrackets) {
    EXPECT_EQ(emitted("select top 1 id from t union all select top 2 id from u"),
              R"(SELECT * FROM (SELECT "t"."id" AS "c1" FROM "t" AS "t" LIMIT ?1) UNION ALL )"
              R"(SELECT * FROM (SELECT "u"."id" AS "c1" FROM "u" AS "u" LIMIT ?2))");
}

TEST(Emitter, SplitsUnionsThatSqliteWouldNotTake) {
    std::string sql = "select id from t";
    for (int i = 0; i < 600; ++i) {
        sql += " union all select id from t";
    }
    const std::string text = emitted(sql);
    EXPECT_NE(text.find(") UNION ALL SELECT * FROM ("), std::string::npos);
}

TEST(Emitter, GivesOneTableInTwoPlacesTwoNames) {
    EXPECT_EQ(emitted("select id from t where n in (select n from t)"),
              R"(SELECT "t"."id" FROM "t" AS "t" WHERE ("t"."n" IN (SELECT "t_2"."n" FROM "t" AS "t_2")))");
}

TEST(Emitter, UpdatesJoinedTablesByTheRowsIds) {
    const std::string sql = emitted("update a set n=b.id from t a join u b on a.id=b.id");
    EXPECT_EQ(sql.find(R"(UPDATE "t" SET "n" = "orven.new"."v1" FROM (SELECT "a"."rowid" AS "id")"), 0U);
    EXPECT_EQ(emitted("delete a from t a join u b on a.id=b.id").find(R"(DELETE FROM "t" WHERE "rowid" IN ()"), 0U);
}

TEST(Emitter, ChecksThatAQueryInPlaceOfAValueGivesOneRow) {
    EXPECT_NE(emitted("select (select id from t)").find("ts_single"), std::string::npos);
    EXPECT_EQ(emitted("select (select max(id) from t)").find("ts_single"), std::string::npos);
}

TEST(Emitter, KnowsTransactionsAsStatements) {
    EXPECT_EQ(translated("begin tran").kind, StatementKind::beginTransaction);
    EXPECT_EQ(translated("commit").kind, StatementKind::commitTransaction);
    EXPECT_EQ(translated("rollback transaction").kind, StatementKind::rollbackTransaction);
}

}  // namespace
}  // namespace orvenmod::store::tsql
