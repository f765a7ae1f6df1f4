#include <gtest/gtest.h>

#include "store/tsql/error.h"
#include "store/tsql/fakecatalog.h"
#include "store/tsql/postgresnames.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {
namespace {

Translation native(const std::string& sql) {
    static const FakeCatalog catalog;
    return translateForPostgres(sql, catalog);
}

std::string text(const std::string& sql) { return native(sql).statements.at(0); }

TEST(PostgresEmitter, CastsEachParameterToItsType) {
    EXPECT_EQ(text("insert into t(id,c,f,d,m) values(9,'','1',null,2.5)"),
              R"(INSERT INTO "t"("id", "c", "f", "d", "m") VALUES ($1::integer, $2::text, $3::double precision, )"
              R"(CAST(NULL AS timestamp), $4::numeric))");
    EXPECT_EQ(text("delete from t where id=5 and n>=2.5"),
              R"(DELETE FROM "t" AS "t" WHERE (("t"."id" = $1::integer) AND ("t"."n" >= $2::numeric)))");
}

TEST(PostgresEmitter, ComparesTextsInTheFormOfTheIndexes) {
    const Translation query = native("select id from u where c='x'");
    EXPECT_EQ(query.statements.at(0),
              R"(SELECT "u"."id" FROM "u" AS "u" WHERE (lower(rtrim("u"."c") COLLATE "C") = $1::text))");
    EXPECT_EQ(query.parameters.at(0).use, Parameter::Use::folded);
}

TEST(PostgresEmitter, OrdersTextsByTheirKeyAndNullsFirst) {
    EXPECT_EQ(text("select id from u order by c desc,id"),
              R"(SELECT "u"."id" FROM "u" AS "u" ORDER BY orven.ts_order("u"."c") DESC NULLS LAST, 1 NULLS FIRST)");
    EXPECT_EQ(text("select id from u where c>'x'"),
              R"(SELECT "u"."id" FROM "u" AS "u" WHERE (orven.ts_order("u"."c") > (SELECT orven.ts_order($1::text))))");
}

TEST(PostgresEmitter, SeeksTheGreatestCodeWhereAnIndexHasIt) {
    FakeCatalog catalog;
    ObjectInfo table = tableOf("k(p int, c varchar(10))");
    table.codeIndexes = {{{"p"}, "c"}};
    catalog.add(table);
    EXPECT_EQ(translateForPostgres("select max(c) from k where p=7 and len(c)=3", catalog).statements.at(0),
              R"(SELECT orven.ts_max("k"."c") FROM (SELECT max("k"."c" COLLATE "C") AS "c" FROM "k" AS "k" WHERE )"
              R"((("k"."p" = $1::integer) AND (length(rtrim("k"."c")) = $2::integer)) AND )"
              R"((length(translate("k"."c", '0123456789', ''))) = 0 UNION ALL SELECT "k"."c" FROM "k" AS "k" WHERE )"
              R"((("k"."p" = $1::integer) AND (length(rtrim("k"."c")) = $2::integer)) AND )"
              R"((length(translate("k"."c", '0123456789', ''))) > 0) AS "k")");
}

TEST(PostgresEmitter, SaysNothingOfNullsWhereThereAreNone) {
    FakeCatalog catalog;
    ObjectInfo table = tableOf("k(id int, n int)");
    table.columns[0].nullable = false;
    catalog.add(table);
    EXPECT_EQ(translateForPostgres("select n from k order by id desc", catalog).statements.at(0),
              R"(SELECT "k"."n" FROM "k" AS "k" ORDER BY "k"."id" DESC)");
    EXPECT_NE(translateForPostgres("select t.n from t left join k on k.id=t.id order by k.id", catalog)
                  .statements.at(0)
                  .find("NULLS FIRST"),
              std::string::npos);
}

TEST(PostgresEmitter, OrdersTheRowsOfATableThatNobodyOrderedByItsKey) {
    FakeCatalog catalog;
    ObjectInfo table = tableOf("k(id int, n int)");
    table.columns[0].nullable = false;
    table.rowOrder = {"id", "n"};
    catalog.add(table);
    const auto orderOf = [&](const std::string& sql) {
        const std::string text = translateForPostgres(sql, catalog).statements.at(0);
        return text.substr(std::min(text.find(" ORDER BY"), text.size()));
    };
    const std::string byKey = R"( ORDER BY "k"."id", "k"."n" NULLS FIRST)";
    EXPECT_EQ(orderOf("select * from k where n=3"), byKey);
    EXPECT_EQ(orderOf("select top 2 n from k"), byKey + " LIMIT $1::integer");
    EXPECT_EQ(orderOf("insert into t(id) select n from k"), byKey);
    EXPECT_EQ(orderOf("select t.id from t where t.id in (select top 1 id from k)"), byKey + " LIMIT $1::integer))");
    for (const char* sql :
         {"select top 1 n from k where n=3", "select count(*) from k", "select n from k group by n",
          "select distinct n from k", "select id from t where exists (select id from k)",
          "select id from t union all select id from k", "select x.id from (select id from k) x", "select id from t"})
        EXPECT_EQ(orderOf(sql), "") << sql;
    EXPECT_EQ(orderOf("select n from k order by n"), R"( ORDER BY 1 NULLS FIRST)");
}

TEST(PostgresEmitter, BoundsAPatternThatHasAPlainBeginning) {
    const Translation query = native("select id from u where c like '.12.%'");
    EXPECT_EQ(query.statements.at(0),
              R"(SELECT "u"."id" FROM "u" AS "u" WHERE (lower(rtrim("u"."c") COLLATE "C") >= $2::text AND )"
              R"(lower(rtrim("u"."c") COLLATE "C") < $3::text AND lower("u"."c" COLLATE "C") LIKE $1::text))");
    EXPECT_EQ(query.parameters.at(0).use, Parameter::Use::likePattern);
    EXPECT_EQ(query.parameters.at(1).use, Parameter::Use::foldedLow);
}

TEST(PostgresEmitter, MatchesOtherPatternsByAnExpression) {
    EXPECT_EQ(text("select id from u where c not like '%[ab]'"),
              R"(SELECT "u"."id" FROM "u" AS "u" WHERE (lower("u"."c" COLLATE "C") !~ $1::text))");
    EXPECT_NE(text("select id from u where c like 'x!%' escape '!'").find("orven.ts_like("), std::string::npos);
}

TEST(PostgresEmitter, TakesTheFirstTextOfAGroup) {
    EXPECT_EQ(text("select c,count(*) from u group by c order by c"),
              R"(SELECT orven.ts_first("u"."c"), count(*) FROM "u" AS "u" GROUP BY lower(rtrim("u"."c") COLLATE "C") )"
              R"(ORDER BY orven.ts_order(orven.ts_first("u"."c")) NULLS FIRST)");
    EXPECT_EQ(text("select distinct c from u"),
              R"(SELECT orven.ts_first("c1") AS "c1" FROM (SELECT "u"."c" AS "c1" FROM "u" AS "u") AS "orven.rows" )"
              R"(GROUP BY lower(rtrim("c1") COLLATE "C"))");
    EXPECT_EQ(text("select distinct id from u"), R"(SELECT DISTINCT "u"."id" FROM "u" AS "u")");
}

TEST(PostgresEmitter, UsesTheGroupsOwnParameterForItsExpression) {
    const Translation query = native("select n+1,sum(id) from t group by n+1");
    EXPECT_EQ(query.statements.at(0),
              R"(SELECT ("t"."n" + $1::integer), CAST(sum("t"."id") AS integer) FROM "t" AS "t" )"
              R"(GROUP BY ("t"."n" + $1::integer))");
}

TEST(PostgresEmitter, LetsALiteralWaitThatMayNotBeNeeded) {
    EXPECT_EQ(
        text("select isnull(n,'abc') from t"),
        R"(SELECT coalesce("t"."n", CAST(orven.ts_bigint((SELECT $1::text), 'varchar(8000)', 'int') AS integer)) )"
        R"(FROM "t" AS "t")");
}

TEST(PostgresEmitter, CalculatesWithItsOwnTypes) {
    EXPECT_EQ(text("select n/2,n%2,n+1 from t"),
              R"(SELECT ("t"."n" / $1::integer), ("t"."n" % $2::integer), ("t"."n" + $3::integer) FROM "t" AS "t")");
    EXPECT_EQ(text("select m/3,m*2.5 from t"), R"(SELECT orven.ts_decdiv("t"."m", $1::integer, 20, 6), )"
                                               R"(CAST("t"."m" * $2::numeric AS numeric(21, 5)) FROM "t" AS "t")");
}

TEST(PostgresEmitter, JoinsAChangedTableToTheOthers) {
    EXPECT_EQ(
        text("update a set n=b.id from t a join u b on a.id=b.id where b.id>1"),
        R"(UPDATE "t" AS "a" SET "n" = "b"."id" FROM "u" AS "b" WHERE ("a"."id" = "b"."id") AND ("b"."id" > $1::integer))");
    EXPECT_EQ(text("delete a from t a, u b where a.id=b.id"),
              R"(DELETE FROM "t" AS "a" USING "u" AS "b" WHERE ("a"."id" = "b"."id"))");
}

TEST(PostgresEmitter, FindsRowsByTheirPlacesInAnOuterJoin) {
    EXPECT_EQ(text("delete a from t a left join u b on a.id=b.id where b.id is null"),
              R"(DELETE FROM "t" WHERE "ctid" = ANY (ARRAY(SELECT "a"."ctid" FROM "t" AS "a" LEFT JOIN "u" AS "b" )"
              R"(ON ("a"."id" = "b"."id") WHERE ("b"."id" IS NULL))))");
    EXPECT_NE(text("update a set n=b.id from t a left join u b on a.id=b.id").find(R"("t"."ctid" = "orven.new"."id")"),
              std::string::npos);
}

TEST(PostgresDefinition, KeepsWhatWasDeclaredInComments) {
    const Translation table = native("create table tX(fA int, fB VARCHAR(10) not null, c decimal(18, 4) default 0)");
    EXPECT_EQ(table.statements.at(0),
              R"(CREATE TABLE "tx"("fa" integer, "fb" varchar(10) NOT NULL, "c" numeric(18,4) DEFAULT 0.0))");
    EXPECT_EQ(table.statements.at(1), R"(COMMENT ON TABLE "tx" IS 'tX')");
    EXPECT_EQ(table.statements.at(3), R"(COMMENT ON COLUMN "tx"."fb" IS 'fB VARCHAR(10)')");
    EXPECT_EQ(table.kind, StatementKind::ddl);
}

TEST(PostgresDefinition, KeepsTextKeysInTheirComparedForm) {
    const Translation table = native("create table X(c varchar(5) primary key, n int unique)");
    EXPECT_EQ(table.statements.at(0), R"(CREATE TABLE "x"("c" varchar(5) NOT NULL, "n" integer))");
    EXPECT_EQ(table.statements.at(4),
              R"(CREATE UNIQUE INDEX "x.constraint.pk.pk__x__c" ON "x"(lower(rtrim("c") COLLATE "C")))");
    EXPECT_EQ(table.statements.at(5), R"(COMMENT ON INDEX "x.constraint.pk.pk__x__c" IS 'PK__X__c')");
    EXPECT_EQ(table.statements.at(6), R"(ALTER TABLE "x" ADD CONSTRAINT "x.constraint.uq.uq__x__n" UNIQUE("n"))");
}

TEST(PostgresDefinition, PutsNullsFirstIntoIndexes) {
    EXPECT_EQ(text("create index ix on t(n,c desc) include (id)"),
              R"(CREATE INDEX "t.ix" ON "t"("n" NULLS FIRST, lower(rtrim("c") COLLATE "C") DESC) INCLUDE ("id"))");
}

TEST(PostgresDefinition, PutsALengthAndTheNumberOfItsOtherSignsInFrontOfACode) {
    EXPECT_EQ(text("create index ix on t(n) include (c)"),
              R"(CREATE INDEX "t.ix" ON "t"("n" NULLS FIRST, length(rtrim("c")), )"
              R"((length(translate("c", '0123456789', ''))), "c" COLLATE "C"))");
}

TEST(PostgresDefinition, LeavesNullInTheRowsThatAreThere) {
    const Translation added = native("alter table t add w varchar(10) default 'x'");
    EXPECT_EQ(added.statements.at(0), R"(ALTER TABLE "t" ADD COLUMN "w" varchar(10))");
    EXPECT_EQ(added.statements.at(1), R"(ALTER TABLE "t" ALTER COLUMN "w" SET DEFAULT 'x'::text)");
    EXPECT_EQ(text("alter table t add w int not null default 5"),
              R"(ALTER TABLE "t" ADD COLUMN "w" integer NOT NULL DEFAULT 5)");
}

TEST(PostgresDefinition, LetsViewsOutliveWhatTheyRead) {
    const Translation dropped = native("alter table t drop column c");
    EXPECT_EQ(dropped.statements.at(0), "SELECT orven.refuse_use('t', 'c')");
    EXPECT_EQ(dropped.statements.at(1), R"(SELECT orven.define('t', 'ALTER TABLE "t" DROP COLUMN "c"'))");
    EXPECT_EQ(text("drop view v"), R"(SELECT orven.define('v', 'DROP VIEW "v"'))");
    const Translation view = native("create view W as select id as fId from t");
    EXPECT_EQ(view.statements.at(0), R"(CREATE VIEW "w" AS SELECT "t"."id" AS "fid" FROM "t" AS "t")");
    EXPECT_EQ(view.statements.at(1), R"(COMMENT ON VIEW "w" IS 'create view W as select id as fId from t')");
    EXPECT_EQ(view.statements.at(2), "SELECT orven.mend_views()");
}

TEST(PostgresDefinition, WritesViewsInPostgresOwnTermsWhereItCan) {
    for (const char* select :
         {"select isnull(a.d,'1900-01-01') as x from t a left join u b on a.id=b.id",
          "select case when isnull(f,0)=0 then 0 else round(isnull(m,0)/2,6) end as x from t where c like 'a%'",
          "select len(c) as a,c+'x' as h,year(d) as b,convert(varchar(10),d,120) as e from t",
          "select n/2 as a,n%2 as b,f/2 as g,sum(n) as h from t group by n,f"}) {
        const Translation view = native("create view x as " + std::string(select));
        EXPECT_TRUE(view.parameters.empty());
        const std::string& sql = view.statements.at(0);
        const std::size_t call = sql.find("orven.");
        EXPECT_TRUE(call == std::string::npos || sql.compare(call, 15, "orven.ts_decdiv") == 0) << sql;
    }
}

TEST(PostgresName, IsCutWithAHashWhereItIsTooLong) {
    EXPECT_EQ(nativeName("tblItem.Number"), "tblitem.number");
    const std::string first = nativeName(std::string(70, 'a') + "1");
    EXPECT_LE(first.size(), 63U);
    EXPECT_NE(first, nativeName(std::string(70, 'a') + "2"));
    std::string han;
    for (int i = 0; i < 30; ++i) {
        han += "客";
    }
    EXPECT_EQ(nativeName(han).substr(0, 54), han.substr(0, 54));
}

}  // namespace
}  // namespace orvenmod::store::tsql
