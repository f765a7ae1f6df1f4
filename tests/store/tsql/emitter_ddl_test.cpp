#include <gtest/gtest.h>

#include "store/tsql/error.h"
#include "store/tsql/fakecatalog.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {
namespace {

TEST(Definition, KeepsDeclaredTypesAsWritten) {
    const Translation table = translated("create table x(a int, b VARCHAR(10) not null, c decimal(18, 4) default 0)");
    ASSERT_EQ(table.statements.size(), 1U);
    EXPECT_EQ(table.statements[0],
              R"(CREATE TABLE "x"("a" int, "b" VARCHAR(10) NOT NULL, "c" decimal(18,4) DEFAULT 0))");
    EXPECT_EQ(table.kind, StatementKind::ddl);
    EXPECT_FALSE(table.cacheable);
}

TEST(Definition, QuotesATypeWithoutASizeWhichSqliteWouldNotRead) {
    EXPECT_EQ(emitted("create table x(a nvarchar(max) not null)"),
              "CREATE TABLE \"x\"(\"a\" \"nvarchar(max)\" NOT NULL)");
}

TEST(Definition, KeepsTheOwnTextOfChecksAndOfDefaultsThatAreComputed) {
    EXPECT_EQ(emitted("create table x(a int default (1 + 2), check(a<>5))"),
              R"(CREATE TABLE "x"("a" int DEFAULT ((1 + 2) /*orven (1 + 2)*/), CHECK (("a" <> 5) /*orven a<>5*/)))");
}

TEST(Definition, IndexesTheItemIdOfATableWithoutAKey) {
    const Translation table = translated("create table x(fItemId int, a int)");
    ASSERT_EQ(table.statements.size(), 2U);
    EXPECT_EQ(table.statements[1], R"(CREATE INDEX "x.orven.fItemId" ON "x"("fItemId"))");
    EXPECT_EQ(translated("create table x(fItemId int primary key)").statements.size(), 1U);
}

TEST(Definition, KeepsTextKeysInTheirComparedForm) {
    const Translation table = translated("create table x(c varchar(5) primary key)");
    ASSERT_EQ(table.statements.size(), 2U);
    EXPECT_EQ(table.statements[0], R"(CREATE TABLE "x"("c" varchar(5) NOT NULL))");
    EXPECT_EQ(table.statements[1],
              R"(CREATE UNIQUE INDEX "x.constraint.pk.PK__x__c" ON "x"(rtrim("c") COLLATE NOCASE))");
}

TEST(Definition, DoesNotLetAnIntegerKeyBecomeTheRowsId) {
    const Translation table = translated("create table x(a integer primary key)");
    EXPECT_EQ(table.statements[0].find("PRIMARY KEY"), std::string::npos);
}

TEST(Definition, IndexesTextsInTheirComparedForm) {
    EXPECT_EQ(emitted("create index ix on t(n,c desc)"),
              R"(CREATE INDEX "t.ix" ON "t"("n", rtrim("c") COLLATE NOCASE DESC))");
}

TEST(Definition, IncludesColumnsBehindTheKeyOfAnIndexButNotOfAUniqueOne) {
    EXPECT_EQ(emitted("create index ix on t(n) include (D)"), R"(CREATE INDEX "t.ix" ON "t"("n", "d"))");
    EXPECT_EQ(emitted("create unique index ix on t(n) include (c)"), R"(CREATE UNIQUE INDEX "t.ix" ON "t"("n"))");
}

TEST(Definition, PutsALengthAndTheKindOfItsSignsInFrontOfACode) {
    EXPECT_EQ(emitted("create index ix on t(n) include (C)"),
              R"(CREATE INDEX "t.ix" ON "t"("n", length(rtrim("c")), ("c" GLOB '*[^0-9]*'), "c"))");
    // Of a text in front no statement tells by its own index which rows have it in common.
    EXPECT_EQ(emitted("create index ix on u(c) include (c)"),
              R"(CREATE INDEX "u.ix" ON "u"(rtrim("c") COLLATE NOCASE, "c"))");
    EXPECT_EQ(emitted("create index ix on t(n) include (c,d)"), R"(CREATE INDEX "t.ix" ON "t"("n", "c", "d"))");
}

TEST(Definition, LeavesNullInTheRowsThatAreThere) {
    const Translation added = translated("alter table t add w varchar(10) default 'x'");
    ASSERT_EQ(added.statements.size(), 2U);
    EXPECT_EQ(added.statements[0], R"(ALTER TABLE "t" ADD COLUMN "w" varchar(10) DEFAULT 'x')");
    EXPECT_EQ(added.statements[1], R"(UPDATE "t" SET "w" = NULL)");
    EXPECT_EQ(translated("alter table t add w int not null default 5").statements.size(), 1U);
}

TEST(Definition, DropsItsOwnIndexWithTheColumn) {
    FakeCatalog catalog;
    ObjectInfo table = tableOf("x(fItemId int, a int)");
    table.indexes = {"x.orven.fItemId"};
    catalog.add(table);
    const auto dropped = translateForSqlite("alter table x drop column fitemid", catalog).statements;
    EXPECT_EQ(dropped.at(0), R"(DROP INDEX "x.orven.fItemId")");
    EXPECT_EQ(dropped.at(2), R"(ALTER TABLE "x" DROP COLUMN "fItemId")");
    EXPECT_EQ(translateForSqlite("alter table x drop column a", catalog).statements.size(), 3U);
}

TEST(StoredView, CallsOnlyFunctionsThatThePlainShellHas) {
    for (const char* select :
         {"select isnull(a.d,'1900-01-01') as x from t a left join u b on a.id=b.id",
          "select case when isnull(f,0)=0 then 0 else round(isnull(m,0)/isnull(f,0),6) end as x from t",
          "select len(c) as a,upper(c) as b,left(c,2) as e,substring(c,2,3) as g,c+'x' as h from t",
          "select year(d) as a,convert(varchar(10),d,120) as b,dateadd(day,1,d) as e from t",
          "select n/2 as a,n%2 as b,m/3 as e,f/2 as g,sum(n) as h,avg(m) as i from t group by n,m,f",
          "select distinct c from t where c like 'a%' and n in (1,2) and c>'b'",
          "select cast(n as varchar(20)) as a,isnull(c,'') as b from t union select c,'' from u"}) {
        const std::string sql = "create view x as " + std::string(select);
        EXPECT_EQ(emitted(sql).find("ts_"), std::string::npos) << emitted(sql);
        EXPECT_TRUE(translated(sql).parameters.empty());
    }
}

TEST(StoredView, ConvertsItsLiteralsWhenItIsMade) {
    EXPECT_NE(emitted("create view x as select isnull(d,'1900-01-01') as k from t").find("'1900-01-01 00:00:00'"),
              std::string::npos);
    EXPECT_EQ(failureOf("create view x as select isnull(n,'abc') as k from t"), 245);
}

TEST(StoredView, GivesItsColumnsNamesAndTypes) {
    const FakeCatalog catalog;
    const auto columns = viewColumns("create view x as select id,isnull(c,'') as k,n/4.0 as q from t", catalog);
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[1].name, "k");
    EXPECT_EQ(printType(columns[1].type), "varchar(10)");
    EXPECT_EQ(printType(columns[2].type), "decimal(17,6)");
    EXPECT_THROW(viewColumns("create view x as select zz from t", catalog), Error);
}

}  // namespace
}  // namespace orvenmod::store::tsql
