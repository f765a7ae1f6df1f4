#include <limits>

#include "conversions.h"
#include "store/tsql/functions.h"

namespace orvenmod::store::tsql::test {
namespace {

double number(const Datum& value) {
    return value.kind == Datum::Kind::integer ? static_cast<double>(value.integer) : value.real;
}

TEST(IntegerDivision, GoesTowardsZero) {
    EXPECT_EQ(integerQuotient(-10, 4), -2);
    EXPECT_EQ(integerRemainder(-10, 4), -2);
    EXPECT_EQ(failureOf([] { integerQuotient(1, 0); }), 8134);
    EXPECT_EQ(failureOf([] { integerRemainder(1, 0); }), 8134);
    EXPECT_EQ(failureOf([] { integerQuotient(std::numeric_limits<std::int64_t>::min(), -1); }), 8115);
    EXPECT_EQ(integerRemainder(std::numeric_limits<std::int64_t>::min(), -1), 0);
}

TEST(DecimalDivision, IsCutToItsScale) {
    EXPECT_DOUBLE_EQ(number(decimalQuotient(integer(10), integer(3), 18, 4)), 3.3333);
    EXPECT_DOUBLE_EQ(number(decimalQuotient(integer(20), integer(3), 18, 4)), 6.6666);
    EXPECT_DOUBLE_EQ(number(decimalQuotient(integer(-10), integer(4), 18, 4)), -2.5);
    EXPECT_DOUBLE_EQ(number(decimalQuotient(real(0.3), real(0.1), 18, 4)), 3);
    EXPECT_EQ(failureOf([] { decimalQuotient(integer(1), integer(0), 18, 4); }), 8134);
    EXPECT_EQ(failureOf([] { decimalQuotient(integer(1000), real(0.001), 5, 2); }), 8115);
}

TEST(DecimalRemainder, IsExact) {
    EXPECT_DOUBLE_EQ(number(decimalRemainder(real(10.5), real(0.1))), 0);
    EXPECT_DOUBLE_EQ(number(decimalRemainder(real(-7.5), integer(2))), -1.5);
    EXPECT_EQ(failureOf([] { decimalRemainder(integer(1), integer(0)); }), 8134);
}

TEST(RoundedNumber, RoundsHalfAwayFromZero) {
    EXPECT_DOUBLE_EQ(number(roundedNumber(real(2.675), 2, false)), 2.68);
    EXPECT_DOUBLE_EQ(number(roundedNumber(real(-2.5), 0, false)), -3);
    EXPECT_DOUBLE_EQ(number(roundedNumber(real(150.75), 0, true)), 150);
    EXPECT_EQ(roundedNumber(integer(748), -2, false).integer, 700);
    EXPECT_EQ(roundedNumber(integer(750), -2, false).integer, 800);
    EXPECT_EQ(roundedNumber(integer(750), -4, false).integer, 0);
    EXPECT_EQ(roundedNumber(integer(750), 3, false).integer, 750);
}

TEST(RoundedDecimal, RefusesMoreDigitsThanItsPrecision) {
    EXPECT_DOUBLE_EQ(number(roundedDecimal(real(1.005), 18, 2)), 1.01);
    EXPECT_EQ(failureOf([] { roundedDecimal(integer(1000), 3, 0); }), 8115);
}

TEST(Power, StaysInItsBasesType) {
    EXPECT_EQ(powerOf(2, 3, *parseType("int")).integer, 8);
    EXPECT_EQ(powerOf(2, -1, *parseType("int")).integer, 0);
    EXPECT_DOUBLE_EQ(number(powerOf(2.5, 2, *parseType("decimal(10,1)"))), 6.3);
    EXPECT_DOUBLE_EQ(number(powerOf(2, 0.5, *parseType("float"))), 1.4142135623730951);
    EXPECT_NE(failureOf([] { powerOf(10, 20, *parseType("int")); }), 0);
    EXPECT_EQ(failureOf([] { powerOf(-1, 0.5, *parseType("float")); }), 3623);
}

}  // namespace
}  // namespace orvenmod::store::tsql::test
