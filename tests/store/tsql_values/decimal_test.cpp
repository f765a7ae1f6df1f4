#include "store/tsql/decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace orvenmod::store::tsql {
namespace {

std::string rounded(std::string_view text, int scale) {
    Decimal number = *Decimal::parse(text);
    number.round(scale);
    return number.print();
}

TEST(DecimalNumber, ReadsAndPrintsPlainNumbers) {
    EXPECT_EQ(Decimal::parse("0012.3400")->print(), "12.34");
    EXPECT_EQ(Decimal::parse("-0.50")->print(), "-0.5");
    EXPECT_EQ(Decimal::parse("-0")->print(), "0");
    EXPECT_EQ(Decimal::parse(".5")->print(3), "0.500");
    EXPECT_EQ(Decimal::parse("0.005")->print(), "0.005");
    EXPECT_FALSE(Decimal::parse("").has_value());
    EXPECT_FALSE(Decimal::parse(".").has_value());
    EXPECT_FALSE(Decimal::parse("1.2.3").has_value());
    EXPECT_EQ(Decimal::parse("12345678901234567890123456789012345678")->print(),
              "12345678901234567890123456789012345678");
}

TEST(DecimalNumber, RoundsHalfAwayFromZero) {
    EXPECT_EQ(rounded("2.675", 2), "2.68");
    EXPECT_EQ(rounded("-2.675", 2), "-2.68");
    EXPECT_EQ(rounded("9.99", 1), "10");
    EXPECT_EQ(rounded("0.004", 2), "0");
    EXPECT_EQ(rounded("0.005", 2), "0.01");
    EXPECT_EQ(rounded("750", -2), "800");
    EXPECT_EQ(rounded("749", -2), "700");
    EXPECT_EQ(rounded("7", -1), "10");
    EXPECT_EQ(rounded("4", -2), "0");
}

TEST(DecimalNumber, IsAnIntegerWhereItFitsElseADouble) {
    EXPECT_EQ(Decimal::parse("10.00")->toDatum().integer, 10);
    EXPECT_EQ(Decimal::parse("10.5")->toDatum().kind, Datum::Kind::real);
    EXPECT_EQ(Decimal::parse("99999999999999999999")->toDatum().kind, Datum::Kind::real);
    EXPECT_EQ(Decimal::parse("123456789012345678")->toDatum().integer, 123456789012345678);
}

TEST(RoundedDouble, RoundsAsTheDigitsSay) {
    EXPECT_EQ(roundedDouble(2.675, 2), 2.68);
    EXPECT_EQ(roundedDouble(1.005, 2), 1.01);
    EXPECT_EQ(roundedDouble(0.1 + 0.2, 4), 0.3);
    EXPECT_EQ(std::signbit(roundedDouble(-0.001, 2)), false);
    std::mt19937 random(711);
    std::uniform_int_distribution<int> digits(-99'999'999, 99'999'999);
    for (int i = 0; i < 20'000; ++i) {
        const double value = digits(random) / 1000.0;
        Decimal exact = Decimal::from(value);
        exact.round(2);
        ASSERT_EQ(roundedDouble(value, 2), exact.toDouble()) << "seed 711, value " << value;
    }
}

}  // namespace
}  // namespace orvenmod::store::tsql
