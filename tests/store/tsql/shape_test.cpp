#include "store/tsql/shape.h"

#include <gtest/gtest.h>

#include <vector>

#include "store/tsql/error.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {
namespace {

Shape shape(std::string_view sql) {
    Shape result;
    result.scan(sql);
    return result;
}

int failure(std::string_view sql) {
    try {
        shape(sql);
        return 0;
    } catch (const Error& error) {
        return error.number();
    }
}

TEST(Shape, IsOneForStatementsThatDifferInTheirValues) {
    EXPECT_EQ(shape("insert into t(id,c) values(1,'a')").key, shape("insert into t(id,c) values(23,'it''s')").key);
    EXPECT_EQ(shape("select * from t where id=5").key, shape("select * from t where id=-7").key);
}

TEST(Shape, TellsKindsOfValuesApart) {
    const std::string whole = shape("select 1").key;
    EXPECT_NE(whole, shape("select 'a'").key);
    EXPECT_NE(whole, shape("select 1.5").key);
    EXPECT_NE(whole, shape("select 1e3").key);
    EXPECT_NE(whole, shape("select 3000000000").key);
    EXPECT_NE(shape("select 1.5").key, shape("select 1.25").key);
    EXPECT_NE(shape("select 'a'").key, shape("select N'a'").key);
}

TEST(Shape, TellsPatternsThatBeginWithAWildcardApart) {
    EXPECT_NE(shape("x like 'a%'").key, shape("x like '%a'").key);
    EXPECT_EQ(shape("x like '_a'").key, shape("x like '%a'").key);
}

TEST(Shape, GivesTheValuesAsWritten) {
    const std::string sql = "values(-5,'it''s',N'货',0x4F,1.50,2e3,$7)";
    const Shape result = shape(sql);
    ASSERT_EQ(result.literals.size(), 7U);
    EXPECT_EQ(result.literals[0].value(), "-5");
    EXPECT_EQ(result.literals[1].value(), "it's");
    EXPECT_EQ(result.literals[2].value(), "货");
    EXPECT_EQ(result.literals[3].value(), "4F");
    EXPECT_EQ(printType(result.literals[4].type()), "decimal(3,2)");
    EXPECT_EQ(printType(result.literals[5].type()), "float");
    EXPECT_EQ(printType(result.literals[6].type()), "money");
}

TEST(Shape, TakesASignOnlyBehindAnOperatorOrBracket) {
    EXPECT_EQ(shape("select a -1").literals[0].value(), "1");
    EXPECT_EQ(shape("select (-1)").literals[0].value(), "-1");
    EXPECT_EQ(shape("set n=n+-1").literals[0].value(), "-1");
}

TEST(Shape, LeavesDigitsInNamesAlone) { EXPECT_TRUE(shape("select fSelfA1,[2],\"3\",客户4 from t5").literals.empty()); }

TEST(Shape, RefusesCommentsSecondStatementsAndOpenQuotes) {
    EXPECT_EQ(failure("select 1 -- x"), 102);
    EXPECT_EQ(failure("select 1 /* x */"), 102);
    EXPECT_EQ(failure("select 1; select 2"), 102);
    EXPECT_EQ(failure("select 'a"), 105);
    EXPECT_EQ(failure("select [a"), 105);
    EXPECT_EQ(failure("select 1 ? 2"), 102);
    EXPECT_EQ(failure("select 1 ; "), 0);
    EXPECT_EQ(failure("select '-- ; /*'"), 0);
}

TEST(Shape, IsReusedWithoutAnythingLeftOver) {
    Shape result;
    result.scan("select 1,2,3");
    result.scan("select 'a'");
    EXPECT_EQ(result.literals.size(), 1U);
    EXPECT_EQ(result.key, shape("select 'a'").key);
}

// The scan passes what is plainly no literal in larger steps than the lexer's.
TEST(Shape, HasTheLiteralsThatTheLexerFinds) {
    for (const std::string_view sql :
         {"select N'a',n'b', n,nn from N where n=N'''' and a=-1 and b=(-2) and c in(-3,-4,- 5)",
          "select a-1,(a)-1,a.b-1,a.-1", "select top 1 f from t1 where #a=1 and @v=2 and x$1=3 and 4x=5",
          "select [a'1],\"b'2\",'c[3'", "select\xE3\x80\x80代码\xE3\x80\x80,名 from 表 where 码='甲' and ぁ=1",
          "update t set d=d+-1 where p like '.1.%'",
          "select 0x1F,$5,-$6,1e3,.5,1.,a.5 from t where a<>1 and b!=-1 and c>=-.5", "", "  ", "n", "=", "select 1;"}) {
        std::vector<std::size_t> expected;
        Lexer lexer(sql);
        for (Token token = lexer.next(); token.kind != Token::Kind::end; token = lexer.next()) {
            if (token.kind == Token::Kind::literal) expected.push_back(token.offset);
        }
        std::vector<std::size_t> found;
        const Shape scanned = shape(sql);
        for (const Literal& literal : scanned.literals)
            found.push_back(literal.offset);
        EXPECT_EQ(found, expected) << sql;
    }
}

}  // namespace
}  // namespace orvenmod::store::tsql
