#include "store/tsql/type.h"

#include <gtest/gtest.h>

#include "store/tsql/error.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {
namespace {

Type type(const char* text) { return *parseType(text); }

TEST(Type, ReadsAndPrintsNamesWithTheirSizes) {
    for (const char* text : {"int", "bigint", "varchar(10)", "nvarchar(max)", "decimal(18,4)", "char(3)", "datetime",
                             "varbinary(max)", "uniqueidentifier", "money", "float", "real", "bit", "ntext"}) {
        ASSERT_TRUE(parseType(text)) << text;
        EXPECT_EQ(printType(type(text)), text);
    }
}

TEST(Type, KnowsOtherSpellingsAndDefaults) {
    EXPECT_EQ(printType(type("INTEGER")), "int");
    EXPECT_EQ(printType(type(" Numeric ( 10 , 2 ) ")), "decimal(10,2)");
    EXPECT_EQ(printType(type("decimal")), "decimal(18,0)");
    EXPECT_EQ(printType(type("varchar")), "varchar(1)");
    EXPECT_EQ(printType(type("float(24)")), "real");
    EXPECT_EQ(printType(type("sysname")), "nvarchar(128)");
}

TEST(Type, RefusesSizesOutOfRangeAndUnknownNames) {
    for (const char* text : {"varchar(0)", "varchar(8001)", "nvarchar(4001)", "decimal(39,0)", "decimal(5,6)", "int(4)",
                             "char(max)", "nosuch", "varchar(", "varchar()", "varchar(1,2)"}) {
        EXPECT_FALSE(parseType(text)) << text;
    }
}

TEST(Type, OfDecimalsInArithmeticFollowsTheServersTable) {
    const Type m = type("decimal(18,4)");
    EXPECT_EQ(printType(arithmeticType(Operator::add, m, type("decimal(5,2)"))), "decimal(19,4)");
    EXPECT_EQ(printType(arithmeticType(Operator::multiply, m, type("decimal(5,2)"))), "decimal(24,6)");
    EXPECT_EQ(printType(arithmeticType(Operator::divide, m, type("decimal(1,0)"))), "decimal(20,6)");
    EXPECT_EQ(printType(arithmeticType(Operator::divide, type("int"), type("decimal(2,1)"))), "decimal(17,6)");
    EXPECT_EQ(printType(arithmeticType(Operator::multiply, type("decimal(38,10)"), type("decimal(38,10)"))),
              "decimal(38,6)");
}

TEST(Type, OfTwoOperandsIsThatOfHigherPrecedence) {
    EXPECT_EQ(printType(arithmeticType(Operator::divide, type("int"), type("smallint"))), "int");
    EXPECT_EQ(printType(arithmeticType(Operator::add, type("int"), type("varchar(5)"))), "int");
    EXPECT_EQ(printType(arithmeticType(Operator::add, type("varchar(3)"), type("nvarchar(5)"))), "nvarchar(8)");
    EXPECT_EQ(printType(arithmeticType(Operator::add, type("decimal(5,2)"), type("float"))), "float");
    EXPECT_EQ(printType(arithmeticType(Operator::add, type("datetime"), type("int"))), "datetime");
    EXPECT_EQ(printType(commonType(type("int"), type("decimal(5,2)"))), "decimal(12,2)");
    EXPECT_EQ(printType(commonType(type("varchar(3)"), type("datetime"))), "datetime");
}

TEST(Type, RefusesOperandsThatAnOperatorDoesNotTake) {
    const auto number = [](Operator op, const char* left, const char* right) {
        try {
            arithmeticType(op, type(left), type(right));
            return 0;
        } catch (const Error& error) {
            return error.number();
        }
    };
    EXPECT_EQ(number(Operator::subtract, "varchar(3)", "varchar(3)"), 8117);
    EXPECT_EQ(number(Operator::modulo, "float", "int"), 402);
    EXPECT_EQ(number(Operator::multiply, "datetime", "int"), 8117);
    EXPECT_EQ(number(Operator::add, "date", "int"), 206);
    EXPECT_EQ(number(Operator::bitAnd, "decimal(5,2)", "int"), 402);
}

TEST(Type, IsNotConvertedSilentlyWhereTheServerWantsACast) {
    EXPECT_THROW(checkImplicit(type("datetime"), type("int")), Error);
    EXPECT_THROW(checkImplicit(type("varchar(5)"), type("varbinary(5)")), Error);
    EXPECT_NO_THROW(checkImplicit(type("int"), type("datetime")));
    EXPECT_NO_THROW(checkExplicit(type("datetime"), type("int")));
    EXPECT_THROW(checkExplicit(type("uniqueidentifier"), type("int")), Error);
}

}  // namespace
}  // namespace orvenmod::store::tsql
