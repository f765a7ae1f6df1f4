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

TEST(DecimalNumber, IsAnIntegerWhereItFitsElseADoubleWhereThatHasItElseItsDigits) {
    EXPECT_EQ(Decimal::parse("10.00")->toDatum().integer, 10);
    EXPECT_EQ(Decimal::parse("10.5")->toDatum().kind, Datum::Kind::real);
    EXPECT_EQ(Decimal::parse("123456789012345678")->toDatum().integer, 123456789012345678);
    EXPECT_EQ(Decimal::parse("4503599627.370495")->toDatum().kind, Datum::Kind::real);
    for (const char* digits : {"99999999999.999999", "-99999999999999999999", "0.12345678901234567891"}) {
        const Datum value = Decimal::parse(digits)->toDatum();
        EXPECT_EQ(value.kind, Datum::Kind::decimal) << digits;
        EXPECT_EQ(value.text, digits);
        EXPECT_EQ(Decimal::from(value), Decimal::parse(digits));
    }
}

TEST(DecimalNumber, ComesBackFromWhatItIsKeptAs) {
    std::mt19937_64 random(1301);
    for (int i = 0; i < 20'000; ++i) {
        std::string digits = std::to_string(random() >> (random() % 64));
        const std::size_t point = random() % (digits.size() + 1);
        if (point > 0) digits.insert(point, 1, '.');
        if (i % 2 == 1) digits.insert(0, 1, '-');
        const auto number = Decimal::parse(digits);
        ASSERT_EQ(Decimal::from(number->toDatum()), number) << "seed 1301, " << digits;
    }
}

TEST(DecimalNumber, IsMultipliedAndDividedToTheLastDigit) {
    const auto times = [](const char* left, const char* right) {
        return (*Decimal::parse(left) * *Decimal::parse(right)).print();
    };
    const auto by = [](const char* left, const char* right, int scale) {
        return Decimal::parse(left)->dividedBy(*Decimal::parse(right), scale).print();
    };
    EXPECT_EQ(times("99999999999.999999", "-99999999999.999999"), "-9999999999999999800000.000000000001");
    EXPECT_EQ(times("-0.5", "0"), "0");
    EXPECT_EQ(by("10", "3", 20), "3.33333333333333333333");
    EXPECT_EQ(by("-2", "3", 2), "-0.66");
    EXPECT_EQ(by("1.5", "0.0003", 0), "5000");
    EXPECT_EQ(by("0.0000000001", "99999999999", 5), "0");
    EXPECT_EQ(by("12345.678", "1", 1), "12345.6");
}

TEST(DecimalNumber, IsAWholeNumberOfItsLastDigit) {
    EXPECT_EQ(Decimal::ofUnits(-5, 3).print(), "-0.005");
    EXPECT_EQ(Decimal::ofUnits(0, 3), Decimal());
    EXPECT_TRUE(*Decimal::parse("12.345")->units(2) == 1235);
    EXPECT_TRUE(*Decimal::parse("-12")->units(2) == -1200);
    EXPECT_EQ(Decimal::parse("1" + std::string(36, '0'))->units(2), std::nullopt);
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
