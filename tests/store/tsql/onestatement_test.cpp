#include "store/tsql/onestatement.h"

#include <gtest/gtest.h>

#include "store/tsql/error.h"
#include "store/tsql/parser.h"

namespace orvenmod::store::tsql {
namespace {

/// The failure of the text as "number near", empty for none.
template <typename Work>
std::string failureOf(Work work) {
    try {
        work();
        return {};
    } catch (const Error& error) {
        return std::to_string(error.number()) + (error.arguments().empty() ? "" : " " + error.arguments()[0]);
    }
}

std::string refusal(std::string_view sql) {
    return failureOf([&] { OneStatement().scan(sql); });
}

TEST(OneStatement, IsWhateverTheSystemSends) {
    for (const char* sql : {
             "select * from t",
             "select top 10 a.fName,b.[order] from dbo.t a left join u b on a.id=b.id where a.c='x;--' order by 1",
             "  (select 1) union all (select 2) order by 1 ;  ",
             "select a from t where a in (select b from u) and exists(select 1) union select 2 except select 3",
             "select case when a=1 then 'delete' else \"drop\" end from t",
             "select a into u from t",
             "insert into t(id,c) values(1,'a'),(2,'b')",
             "insert t select a from u union all select b from v",
             "insert into t(a) (select a from u)",
             "insert into t default values",
             "update t set a=1,b=(select max(b) from u) from t inner join u on t.id=u.id where t.id=1",
             "delete from t where id in (1,2)",
             "delete t",
             "create table t(id int identity(1,1) primary key,u int references u(id) on delete cascade)",
             "create view v(a) as select 1 union all select 2",
             "alter view v as select 1",
             "create unique index i on t(a desc)",
             "drop index t.i",
             "drop table if exists t",
             "alter table t add c int default 0 with values",
             "alter table dbo.[t 1] alter column c varchar(20)",
             "alter table t drop constraint c,column d",
             "alter table t with nocheck add constraint c foreign key(a) references u(a) on delete set null",
             "alter table t add check(a>0)",
             "alter table dbo.t disable trigger x",
             "alter table [t] enable trigger all",
             "alter table t check constraint all",
             "alter database suite set ansi_nulls on",
             "drop trigger x",
             "disable trigger x on t",
             "truncate table t",
             "with a as (select 1 b) select b from a",
             "with a as (select 1 b) insert into t select b from a",
             "grant select, insert on t to u with grant option",
             "exec sp_help 't'",
             "set lock_timeout 100",
             "select '；' as 甲乙 from 表",
         }) {
        EXPECT_EQ(refusal(sql), "") << sql;
    }
}

TEST(OneStatement, RefusesASecondOneBehindASemicolonAndComments) {
    EXPECT_EQ(refusal("select 1; delete from t"), "102 ;");
    EXPECT_EQ(refusal("select 1 -- x"), "102 --");
    EXPECT_EQ(refusal("select 1 /* x */"), "102 /*");
    EXPECT_EQ(refusal("select * from t where c like '%x'; delete from t --%'"), "102 ;");
    EXPECT_EQ(refusal("select * from t where c='x"), "105 x");
}

TEST(OneStatement, RefusesASecondOneWithoutASignInBetween) {
    EXPECT_EQ(refusal("select * from t where c='' delete from t where ''=''"), "156 delete");
    EXPECT_EQ(refusal("select * from t where c=''DROP TABLE t"), "156 DROP");
    EXPECT_EQ(refusal("select 1 select 2"), "156 select");
    EXPECT_EQ(refusal("(select 1) delete from t"), "156 delete");
    EXPECT_EQ(refusal("select 1\xE3\x80\x80update t set a=1"), "156 update");
    EXPECT_EQ(refusal("insert into t values(1) select 2"), "156 select");
    EXPECT_EQ(refusal("insert into t select 1 select 2"), "156 select");
    EXPECT_EQ(refusal("insert into t (select 1) select 2"), "156 select");
    EXPECT_EQ(refusal("insert into t select 1 exec p"), "156 exec");
    EXPECT_EQ(refusal("update t set a=1 set nocount on"), "156 set");
    EXPECT_EQ(refusal("update t set a=1 update u set b=1"), "156 update");
    EXPECT_EQ(refusal("delete from t truncate table u"), "156 truncate");
    EXPECT_EQ(refusal("alter table t add c int drop table u"), "156 drop");
    EXPECT_EQ(refusal("alter table t add c int add d int"), "156 add");
    EXPECT_EQ(refusal("create table t(a int) drop table u"), "156 drop");
    EXPECT_EQ(refusal("create view v as select 1 delete from t"), "156 delete");
    EXPECT_EQ(refusal("drop table t if 1=1 shutdown"), "156 if");
    EXPECT_EQ(refusal("truncate table t shutdown"), "156 shutdown");
    EXPECT_EQ(refusal("with a as (select 1 b) select b from a delete from t"), "156 delete");
    EXPECT_EQ(refusal("select a from t waitfor delay '1:0'"), "156 waitfor");
    EXPECT_EQ(refusal("select a from t u disable trigger x on t"), "156 trigger");
    EXPECT_EQ(refusal("grant select on t to u delete from t"), "156 delete");
    EXPECT_EQ(refusal("insert into t select a from (delete from u output deleted.a) d"), "156 delete");
}

// A definition's own words may open another statement behind its end.
TEST(OneStatement, RefusesASecondOneBehindADefinition) {
    EXPECT_EQ(refusal("alter database suite set ansi_nulls on delete from t"), "156 delete");
    EXPECT_EQ(refusal("alter database suite set ansi_nulls on update t set a=1"), "156 update");
    EXPECT_EQ(refusal("alter table t add check(1=1) drop table u"), "156 drop");
    EXPECT_EQ(refusal("alter table t check constraint all drop table u"), "156 drop");
    EXPECT_EQ(refusal("alter table t check constraint all select a into u from t"), "156 select");
    EXPECT_EQ(refusal("alter table t add check(1=1) disable trigger x on t"), "156 trigger");
    EXPECT_EQ(refusal("alter table t add c int disable trigger x on t"), "156 trigger");
    EXPECT_EQ(refusal("create table t(a int) disable trigger x on u"), "156 trigger");
    EXPECT_EQ(refusal("drop table t enable trigger x on u"), "156 trigger");
    EXPECT_EQ(refusal("enable trigger x on t disable trigger y on u"), "156 trigger");
}

// A server reads 1e and a sign of money as numbers, and what stands behind them as another word.
TEST(OneStatement, RefusesASecondOneThatIsGluedToANumber) {
    EXPECT_EQ(refusal("select * from t where a=1edelete from t"), "102 edelete");
    EXPECT_EQ(refusal("select * from t where a=.5Eexec p"), "102 Eexec");
    EXPECT_EQ(refusal("select * from t where a=1.edelete from t"), "102 edelete");
    EXPECT_EQ(refusal("select * from t where a=1e5edelete from t"), "102 edelete");
    EXPECT_EQ(refusal("select * from t where a=$1edelete from t"), "102 edelete");
    EXPECT_EQ(refusal("select * from t where a=\xC2\xA3"
                      "delete from t"),
              "102 \xC2\xA3"
              "delete");
    EXPECT_EQ(refusal("select * from t where a=\xEF\xBF\xA5"
                      "delete from t"),
              "102 \xEF\xBF\xA5"
              "delete");
    EXPECT_EQ(refusal("select 1e5,1 elements,'\xC2\xA3' as [\xC2\xA3],'1'edge from t where a=1or b=0xe"), "");
}

TEST(OneStatement, IsRefusedAsTheParserRefusesIt) {
    for (const char* sql : {"select * from t where c='' delete from t where ''=''", "select 1; select 2",
                            "select 1 -- x", "select 'x", "insert into t values(1) drop table t",
                            "delete from t where a=1 exec p", "", "  ", "select 1 from t where a=1 ! 2"}) {
        EXPECT_EQ(refusal(sql), failureOf([&] { Parser(sql).parse(); })) << sql;
        EXPECT_NE(refusal(sql), "") << sql;
    }
}

TEST(OneStatement, RefusesBytesThatAreNoText) {
    const std::string noText = std::to_string(kNoText);
    EXPECT_EQ(refusal("select '\xE4' + ' delete from t'"), noText);
    EXPECT_EQ(refusal("select '\xC0\xA7'"), noText);
    EXPECT_EQ(refusal("select '\xE0\x80\xA7'"), noText);
    EXPECT_EQ(refusal("select '\xED\xA0\x80'"), noText);
    EXPECT_EQ(refusal("select '\xF4\x90\x80\x80'"), noText);
    EXPECT_EQ(refusal(std::string_view("select 'a\0b'", 12)), noText);
    EXPECT_EQ(refusal("select '货\xF0\xA0\x80\x80'"), "");
}

// A server may take one for a blank, and what stands behind it for the word that it is.
TEST(OneStatement, RefusesForeignBlanksOutsideOfQuotes) {
    EXPECT_EQ(refusal("select 1 a\xC2\xA0"
                      "delete from t"),
              "102 a\xC2\xA0"
              "delete");
    EXPECT_EQ(refusal("select 1 a\xE2\x80\x83"
                      "delete from t"),
              "102 a\xE2\x80\x83"
              "delete");
    EXPECT_EQ(refusal("select 1 a\xEF\xBB\xBF"
                      "delete from t"),
              "102 a\xEF\xBB\xBF"
              "delete");
    EXPECT_EQ(refusal("select 'a\xC2\xA0"
                      "delete' as [b\xC2\xA0"
                      "c]"),
              "");
}

TEST(OneStatement, TellsWhatControlsTransactions) {
    const auto control = [](std::string_view sql) {
        OneStatement statement;
        statement.scan(sql);
        return statement.control();
    };
    EXPECT_EQ(control("begin tran"), OneStatement::Control::begin);
    EXPECT_EQ(control("BEGIN TRANSACTION;"), OneStatement::Control::begin);
    EXPECT_EQ(control("commit"), OneStatement::Control::commit);
    EXPECT_EQ(control("commit work"), OneStatement::Control::commit);
    EXPECT_EQ(control("rollback tran"), OneStatement::Control::rollback);
    EXPECT_EQ(control("rollback tran point"), OneStatement::Control::none);
    EXPECT_EQ(control("select 1"), OneStatement::Control::none);
}

TEST(OneStatement, RefusesABeginAndACommitThatTheConnectionWouldNotCount) {
    EXPECT_EQ(refusal("begin transaction t1"), "102 t1");
    EXPECT_EQ(refusal("begin distributed transaction"), "102 distributed");
    EXPECT_EQ(refusal("begin try"), "102 try");
    EXPECT_EQ(refusal("commit tran t1"), "102 t1");
    EXPECT_EQ(refusal("commit work with (delayed_durability=on)"), "102 with");
    EXPECT_EQ(refusal("rollback tran point"), "");
}

TEST(OneStatement, TellsWhatLeavesSomethingInTheSession) {
    const auto touches = [](std::string_view sql) {
        OneStatement statement;
        statement.scan(sql);
        return statement.touchesSession();
    };
    EXPECT_TRUE(touches("set dateformat dmy"));
    EXPECT_TRUE(touches("use master"));
    EXPECT_TRUE(touches("exec sp_help"));
    EXPECT_TRUE(touches("create table #t(a int)"));
    EXPECT_TRUE(touches("select 1 a into [#t]"));
    EXPECT_FALSE(touches("create table t(a int)"));
    EXPECT_FALSE(touches("(select '#t')"));
}

TEST(OneStatement, TellsWhatGivesNoRows) {
    const auto mayGiveRows = [](std::string_view sql) {
        OneStatement statement;
        statement.scan(sql);
        return statement.mayGiveRows();
    };
    EXPECT_TRUE(mayGiveRows("select a from t"));
    EXPECT_TRUE(mayGiveRows("(select a from t)"));
    EXPECT_TRUE(mayGiveRows("with a as (select 1 b) select b from a"));
    EXPECT_TRUE(mayGiveRows("exec sp_help"));
    EXPECT_FALSE(mayGiveRows("select a into u from t"));
    EXPECT_FALSE(mayGiveRows("delete from t"));
    EXPECT_FALSE(mayGiveRows("with a as (select 1 b) insert into t select b from a"));
    EXPECT_FALSE(mayGiveRows("drop table t"));
}

TEST(OneStatement, GivesTheWideTextsThatGoThroughTheCodePage) {
    OneStatement statement;
    statement.scan("select 'a','甲''',N'乙',丙 from 表 where c='丁'");
    EXPECT_EQ(statement.wideTexts(), (std::vector<std::string_view>{"甲''", "丁"}));
    statement.scan("select 'a'");
    EXPECT_TRUE(statement.wideTexts().empty());
}

}  // namespace
}  // namespace orvenmod::store::tsql
