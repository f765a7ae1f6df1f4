#include <gtest/gtest.h>

#include "store/tsql/error.h"
#include "store/tsql/fakecatalog.h"

namespace orvenmod::store::tsql {
namespace {

std::string typeOfFirst(const std::string& expression) {
    return printType(translated("select " + expression + " as x from t").columns.at(0).type);
}

TEST(Binder, FindsNamesWithoutRegardToCase) { EXPECT_EQ(failureOf("SELECT T.ID FROM DBO.T WHERE [n]=1"), 0); }

TEST(Binder, NamesWhatDoesNotExist) {
    EXPECT_EQ(failureOf("select zz from t"), 207);
    EXPECT_EQ(failureTextOf("select zz from t"), "zz");
    EXPECT_EQ(failureOf("select * from nosuch"), 208);
    EXPECT_EQ(failureOf("select x.id from t"), 4104);
    EXPECT_EQ(failureTextOf("select x.id from t"), "x.id");
    EXPECT_EQ(failureOf("select nosuch.* from t"), 107);
    EXPECT_EQ(failureOf("select nosuch(1)"), 195);
    EXPECT_EQ(failureOf("select id from t where n >abc"), 207);
    EXPECT_EQ(failureOf("update t set zz=1"), 207);
    EXPECT_EQ(failureOf("insert into t(zz) values(1)"), 207);
    EXPECT_EQ(failureOf("select t.id from t a"), 4104);
}

TEST(Binder, RefusesNamesThatMeanTwoThings) {
    EXPECT_EQ(failureOf("select id from t, u"), 209);
    EXPECT_EQ(failureOf("select t.id,u.id from t,u order by id"), 209);
    EXPECT_EQ(failureOf("select 1 from t, t"), 1013);
    EXPECT_EQ(failureOf("select 1 from t a, u a"), 1011);
}

TEST(Binder, FindsTheOuterQuerysColumnsFromWithin) {
    EXPECT_EQ(failureOf("select id from t a where exists(select 1 from u where u.id=a.n)"), 0);
    EXPECT_EQ(failureOf("select id from t a, (select id as k from u where u.id=a.n) b"), 4104);
}

TEST(Binder, GivesArithmeticItsType) {
    EXPECT_EQ(typeOfFirst("n+1"), "int");
    EXPECT_EQ(typeOfFirst("n+'5'"), "int");
    EXPECT_EQ(typeOfFirst("n/4.0"), "decimal(17,6)");
    EXPECT_EQ(typeOfFirst("m/3"), "decimal(20,6)");
    EXPECT_EQ(typeOfFirst("f/4"), "float");
    EXPECT_EQ(typeOfFirst("c+c"), "varchar(20)");
    EXPECT_EQ(typeOfFirst("d+1"), "datetime");
}

TEST(Binder, GivesFunctionsTheirType) {
    EXPECT_EQ(typeOfFirst("isnull(c,0)"), "varchar(10)");
    EXPECT_EQ(typeOfFirst("isnull(n,1.5)"), "int");
    EXPECT_EQ(typeOfFirst("coalesce(n,m)"), "decimal(18,4)");
    EXPECT_EQ(typeOfFirst("case when n=1 then n else f end"), "float");
    EXPECT_EQ(typeOfFirst("nullif(c,'x')"), "varchar(10)");
    EXPECT_EQ(typeOfFirst("round(m,2)"), "decimal(18,4)");
    EXPECT_EQ(typeOfFirst("ceiling(m)"), "decimal(18,0)");
    EXPECT_EQ(typeOfFirst("left(c,2)"), "varchar(10)");
    EXPECT_EQ(typeOfFirst("dateadd(day,1,'2026-01-01')"), "datetime");
    EXPECT_EQ(typeOfFirst("cast(n as varchar)"), "varchar(30)");
}

TEST(Binder, GivesAggregatesTheirType) {
    EXPECT_EQ(typeOfFirst("sum(m)"), "decimal(38,4)");
    EXPECT_EQ(typeOfFirst("avg(m)"), "decimal(38,6)");
    EXPECT_EQ(typeOfFirst("avg(n)"), "int");
    EXPECT_EQ(typeOfFirst("max(c)"), "varchar(10)");
    EXPECT_EQ(typeOfFirst("count(*)"), "int");
}

TEST(Binder, ConvertsAValueToTheColumnItIsStoredIn) {
    const Translation insert = translated("insert into t(id,c,d) values('1',5,'2026-01-01')");
    ASSERT_EQ(insert.parameters.size(), 3U);
    EXPECT_EQ(printType(insert.parameters[0].to), "int");
    EXPECT_EQ(printType(insert.parameters[1].to), "varchar(10)");
    EXPECT_TRUE(insert.parameters[1].assignment);
    EXPECT_EQ(insert.parameters[1].table, "t");
    EXPECT_EQ(insert.parameters[1].column, "c");
    EXPECT_EQ(printType(insert.parameters[2].to), "datetime");
}

TEST(Binder, CountsTheValuesOfAnInsert) {
    EXPECT_EQ(failureOf("insert into t(id,n) values(1)"), 109);
    EXPECT_EQ(failureOf("insert into t(id,n) values(1,2,3)"), 110);
    EXPECT_EQ(failureOf("insert into t values(1,2)"), 213);
    EXPECT_EQ(failureOf("insert into t(id,n) select 1"), 120);
    EXPECT_EQ(failureOf("insert into t(id) select 1,2"), 121);
    EXPECT_EQ(failureOf("insert into t(id,id) values(1,2)"), 264);
    EXPECT_EQ(failureOf("insert into t(id,n) values(1,2),(3)"), 10709);
}

TEST(Binder, RefusesWhatTypesDoNotAllow) {
    EXPECT_EQ(failureOf("select -c from t"), 8117);
    EXPECT_EQ(failureOf("select sum(c) from t"), 8117);
    EXPECT_EQ(failureOf("select c-c from t"), 8117);
    EXPECT_EQ(failureOf("update t set n=d"), 257);
    EXPECT_EQ(failureOf("select id from t where 1"), 4145);
    EXPECT_EQ(failureOf("select len(c,1) from t"), 174);
    EXPECT_EQ(failureOf("select dateadd(nosuch,1,d) from t"), 155);
}

TEST(Binder, RefusesOperandsThatHaveNothingInCommon) {
    EXPECT_EQ(failureOf("select n&$2.5 from t"), 402);
    EXPECT_EQ(failureOf("select id from t where d=convert(time,'03:04')"), 402);
}

TEST(Binder, ChecksWhatADefinitionNeeds) {
    EXPECT_EQ(failureOf("create table T(a int)"), 2714);
    EXPECT_EQ(failureOf("create table x(a int, A int)"), 2705);
    EXPECT_EQ(failureOf("create table x(a nosuchtype)"), 2715);
    EXPECT_EQ(failureOf("create table x(a int, primary key(b))"), 1911);
    EXPECT_EQ(failureOf("create table x(a int primary key, b int primary key)"), 8110);
    EXPECT_EQ(failureOf("alter table nosuch add a int"), 4902);
    EXPECT_EQ(failureOf("alter table t add N int"), 2705);
    EXPECT_EQ(failureOf("alter table t add y int not null"), 4901);
    EXPECT_EQ(failureOf("alter table t drop column zz"), 4924);
    EXPECT_EQ(failureOf("drop table nosuch"), 3701);
    EXPECT_EQ(failureOf("drop table v"), 3705);
    EXPECT_EQ(failureOf("create index i on t(zz)"), 1911);
    EXPECT_EQ(failureOf("create index i on t(n) include (zz)"), 1911);
    EXPECT_EQ(failureOf("truncate table nosuch"), 4701);
}

TEST(Binder, TellsATablesOnlyColumnByItsNameAndItsTable) {
    EXPECT_EQ(failureOf("alter table u drop column id, c"), 4923);
    EXPECT_EQ(failureTextOf("alter table u drop column id, c"), "id|u");
}

TEST(Binder, ChecksAViewsColumns) {
    EXPECT_EQ(failureOf("create view v as select 1 as a"), 2714);
    EXPECT_EQ(failureOf("create view x as select nosuch from t"), 207);
    EXPECT_EQ(failureOf("create view x as select n+1 from t"), 4511);
    EXPECT_EQ(failureOf("create view x as select id,ID from t"), 4506);
    EXPECT_EQ(failureOf("create view x as select id from t order by id"), 1033);
    EXPECT_EQ(failureOf("create view x(a,b) as select id from t"), 8159);
    EXPECT_EQ(failureOf("alter view nosuch as select 1 as a"), 208);
    EXPECT_EQ(failureOf("update v set id=1"), kNotSupported);
}

}  // namespace
}  // namespace orvenmod::store::tsql
