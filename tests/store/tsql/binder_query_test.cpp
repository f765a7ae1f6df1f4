#include <gtest/gtest.h>

#include "store/tsql/fakecatalog.h"

namespace orvenmod::store::tsql {
namespace {

std::vector<std::string> columnsOf(const std::string& sql) {
    std::vector<std::string> names;
    for (const ResultColumn& column : translated(sql).columns) {
        names.push_back(column.name);
    }
    return names;
}

using Names = std::vector<std::string>;

TEST(BoundQuery, NamesItsColumnsAsWrittenAndThoseOfAStarAsDeclared) {
    EXPECT_EQ(columnsOf("SELECT ID,n as X FROM T"), (Names{"ID", "X"}));
    EXPECT_EQ(columnsOf("SELECT u.*,t.id FROM U,T"), (Names{"id", "c", "id"}));
    EXPECT_EQ(columnsOf("select count(*),max(n),n+1 from t group by n"), (Names{"count", "max", ""}));
}

TEST(BoundQuery, WantsEveryColumnOfAGroupedQueryInTheGroups) {
    EXPECT_EQ(failureOf("select n,count(*) from t"), 8120);
    EXPECT_EQ(failureTextOf("select n,count(*) from t"), "t.n");
    EXPECT_EQ(failureOf("select id from t group by n"), 8120);
    EXPECT_EQ(failureOf("select n from t group by n having id>1"), 8121);
    EXPECT_EQ(failureOf("select n from t group by n order by id"), 8127);
    EXPECT_EQ(failureOf("select n+1,upper(c) from t group by n,upper(c)"), 0);
    EXPECT_EQ(failureOf("select left(c,1) from t group by left(c,2)"), 8120);
}

TEST(BoundQuery, FixesTheValuesOnWhichAGroupDepends) {
    const Translation grouped = translated("select left(c,2),3 from t group by left(c,2)");
    ASSERT_EQ(grouped.fixedLiterals.size(), 2U);
    EXPECT_EQ(grouped.fixedLiterals[0].literal, 0);
    EXPECT_EQ(grouped.fixedLiterals[1].literal, 2);
    EXPECT_EQ(grouped.fixedLiterals[1].text, "2");
    EXPECT_TRUE(translated("select id from t where id=1").fixedLiterals.empty());
}

TEST(BoundQuery, RefusesAggregatesWhereThereAreNoGroupsYet) {
    EXPECT_EQ(failureOf("select id from t where sum(n)>1"), 147);
    EXPECT_EQ(failureOf("select max(sum(n)) from t"), 130);
    EXPECT_EQ(failureOf("select 1 from t group by sum(n)"), 144);
}

TEST(BoundQuery, OrdersByNumberAliasColumnOrExpression) {
    EXPECT_EQ(failureOf("select id x from t order by 1, x, n, n+1"), 0);
    EXPECT_EQ(failureOf("select id from t order by 2"), 108);
    EXPECT_EQ(failureOf("select distinct n from t order by id"), 145);
    EXPECT_EQ(failureOf("select id from t union select 1 order by n"), 207);
    EXPECT_EQ(failureOf("select id from t union select 1 order by id+1"), 104);
    EXPECT_EQ(failureOf("select id from t where exists(select 1 from u order by id)"), 1033);
}

TEST(BoundQuery, GivesAUnionTheCommonTypes) {
    const Translation both = translated("select id,c from t union all select 2.5,'x'");
    EXPECT_EQ(printType(both.columns[0].type), "decimal(11,1)");
    EXPECT_EQ(failureOf("select id from t union select id,n from t"), 205);
}

TEST(BoundQuery, WantsNamesInADerivedTable) {
    EXPECT_EQ(failureOf("select 1 from (select n+1 from t) a"), 8155);
    EXPECT_EQ(failureOf("select 1 from (select id,ID from t) a"), 8156);
    EXPECT_EQ(failureOf("select a.x from (select n+1 from t) a(x)"), 0);
    EXPECT_EQ(failureOf("select 1 from (select id from t) a(x,y)"), 8159);
    EXPECT_EQ(failureOf("select 1 from (select id from t order by id) a"), 1033);
}

TEST(BoundQuery, WantsOneColumnWhereAValueStands) {
    EXPECT_EQ(failureOf("select (select id,n from t)"), 116);
    EXPECT_EQ(failureOf("select 1 from t where id in (select id,n from t)"), 116);
}

TEST(BoundQuery, ComparesInTheTypeOfHigherPrecedence) {
    EXPECT_EQ(printType(translated("select id from t where n='10'").parameters[0].to), "int");
    EXPECT_EQ(printType(translated("select id from t where d='2026-01-01'").parameters[0].to), "datetime");
    EXPECT_EQ(printType(translated("select id from t where m between '1' and 2").parameters[0].to), "decimal(18,4)");
}

}  // namespace
}  // namespace orvenmod::store::tsql
