#include "store/tsql/parser.h"

#include <gtest/gtest.h>

#include "store/tsql/error.h"

namespace orvenmod::store::tsql {
namespace {

template <typename Kind>
Kind parsed(std::string_view sql) {
    Statement statement = Parser(sql).parse();
    return std::move(std::get<Kind>(statement));
}

const Select& selectOf(const QueryStatement& statement) { return *statement.query->select; }

std::string failure(std::string_view sql) {
    try {
        Parser(sql).parse();
        return "";
    } catch (const Error& error) {
        return std::to_string(error.number()) + (error.arguments().empty() ? "" : " " + error.arguments()[0]);
    }
}

TEST(Parser, ReadsAliasesInEveryForm) {
    const auto statement = parsed<QueryStatement>("select a x, b as y, c 'z', [w w]=d, t.e, 'k'=f from t");
    const std::vector<std::string> names = {"x", "y", "z", "w w", "e", "k"};
    ASSERT_EQ(selectOf(statement).items.size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(selectOf(statement).items[i].name, names[i]);
    }
}

TEST(Parser, BindsProductsBeforeSumsAndAndBeforeOr) {
    const auto statement = parsed<QueryStatement>("select 1+2*3 where a=1 or b=2 and c=3");
    EXPECT_EQ(selectOf(statement).items[0].expression->op, Operator::add);
    EXPECT_EQ(selectOf(statement).where->op, Operator::logicalOr);
}

TEST(Parser, NestsJoinsByTheirConditions) {
    const auto flat = parsed<QueryStatement>("select 1 from a join b on 1=1 left outer join c on 1=1");
    const Source& outer = *selectOf(flat).from[0];
    EXPECT_EQ(outer.join, JoinKind::left);
    EXPECT_EQ(outer.left->kind, Source::Kind::join);
    const auto nested = parsed<QueryStatement>("select 1 from a left join b join c on 1=1 on 1=1");
    EXPECT_EQ(selectOf(nested).from[0]->right->kind, Source::Kind::join);
}

TEST(Parser, TellsABracketedQueryFromABracketedJoin) {
    const auto derived = parsed<QueryStatement>("select 1 from (select 1 as x union select 2) q");
    EXPECT_EQ(selectOf(derived).from[0]->kind, Source::Kind::derived);
    const auto join = parsed<QueryStatement>("select 1 from ((select 1 as x) a join t b on 1=1)");
    EXPECT_EQ(selectOf(join).from[0]->kind, Source::Kind::join);
}

TEST(Parser, TellsAListOfQueriesFromAQuery) {
    const auto kindOf = [](const char* condition) {
        const auto statement = parsed<QueryStatement>(std::string("select 1 where a in ") + condition);
        return selectOf(statement).where->kind;
    };
    EXPECT_EQ(kindOf("(select 1)"), ExpressionKind::inQuery);
    EXPECT_EQ(kindOf("((select 1))"), ExpressionKind::inQuery);
    EXPECT_EQ(kindOf("((select 1) union (select 2))"), ExpressionKind::inQuery);
    EXPECT_EQ(kindOf("((select top 1 b from t order by b), 2)"), ExpressionKind::inList);
}

TEST(Parser, TakesOwnersAndLockHints) {
    const auto statement = parsed<QueryStatement>("select 1 from dbo.t as a with (nolock), master..x (nolock)");
    EXPECT_EQ(selectOf(statement).from[0]->name, "t");
    EXPECT_EQ(selectOf(statement).from[0]->alias, "a");
    EXPECT_EQ(selectOf(statement).from[1]->name, "x");
}

TEST(Parser, ReadsEveryFormOfInsert) {
    EXPECT_EQ(parsed<InsertStatement>("insert t values(1,default),(2,3)").rows.size(), 2U);
    EXPECT_TRUE(parsed<InsertStatement>("insert into t default values").defaultValues);
    EXPECT_TRUE(parsed<InsertStatement>("insert into t(a) select 1").query);
    EXPECT_TRUE(parsed<InsertStatement>("insert into t (select 1)").columns.empty());
}

TEST(Parser, ReadsEveryFormOfDelete) {
    EXPECT_FALSE(parsed<DeleteStatement>("delete t where a=1").joined);
    EXPECT_TRUE(parsed<DeleteStatement>("delete from a from t a join u b on 1=1").joined);
}

TEST(Parser, ReadsColumnsWithTheirOptions) {
    const auto table = parsed<CreateTableStatement>(
        "create table t(a int identity(5,1) primary key, b varchar(10) not null default 'x', constraint uq unique (b "
        "desc),"
        " check (a>0))");
    EXPECT_TRUE(table.columns[0].identity);
    EXPECT_EQ(table.columns[0].identitySeed, "5");
    EXPECT_TRUE(table.columns[1].notNull);
    EXPECT_EQ(table.columns[1].declaredType, "varchar(10)");
    ASSERT_EQ(table.keys.size(), 2U);
    EXPECT_TRUE(table.keys[0].primary);
    EXPECT_EQ(table.keys[1].name, "uq");
    EXPECT_TRUE(table.keys[1].columns[0].descending);
    EXPECT_EQ(table.checks.size(), 1U);
}

TEST(Parser, NamesWhatItStumblesOver) {
    EXPECT_EQ(failure("selct 1"), "102 selct");
    EXPECT_EQ(failure("select from t"), "156 from");
    EXPECT_EQ(failure("select id,, n from t"), "102 ,");
    EXPECT_EQ(failure("select id from t where"), "156 where");
    EXPECT_EQ(failure("update t set a=1 b=2"), "102 b");
    EXPECT_EQ(failure("select * from tblSubType where  and   a=1"), "156 and");
}

// It goes into the target's text as it stands.
TEST(Parser, TakesAWholeNumberForWhatAnIdentityBeginsWith) {
    EXPECT_EQ(parsed<CreateTableStatement>("create table t(a int identity(-5,1))").columns[0].identitySeed, "-5");
    EXPECT_EQ(failure("create table t(a int identity(x,1))"), "102 x");
    EXPECT_EQ(failure("create table t(a int identity(1.5,1))"), "102 1.5");
    EXPECT_EQ(failure("create table t(a int identity(99999999999999999999,1))"), "102 99999999999999999999");
    EXPECT_EQ(failure("create table t(a int identity('7',1))").substr(0, 3), "102");
}

TEST(Parser, TellsHowLongANameMayBe) {
    const std::string name(600, 'n');
    try {
        Parser("select " + name + " from t").parse();
        FAIL() << "a name of 600 characters was taken";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 103);
        EXPECT_EQ(error.arguments(), (std::vector<std::string>{name, "128"}));
    }
}

TEST(Parser, RefusesWhatTheStoreDoesNotKnow) {
    for (const char* sql : {"exec p", "declare @a int", "set nocount on", "with x as (select 1 as a) select a from x",
                            "select row_number() over (order by a) from t", "create table #x(a int)",
                            "create procedure p as select 1", "select @@rowcount", "alter table t alter column a int",
                            "create table t(a int references u(a))", "select a collate Latin1_General_BIN from t"}) {
        EXPECT_EQ(failure(sql).substr(0, 5), std::to_string(kNotSupported)) << sql;
    }
}

TEST(Parser, SurvivesDeepNesting) {
    const std::string deep = "select " + std::string(5000, '(') + "1" + std::string(5000, ')');
    EXPECT_EQ(failure(deep).substr(0, 5), std::to_string(kNotSupported));
}

}  // namespace
}  // namespace orvenmod::store::tsql
