#include "platform/numberformat.h"

#include <gtest/gtest.h>

namespace orvenmod::platform {
namespace {

TEST(NumberFormat, groupsThousandsAndDropsTrailingZeros) {
    EXPECT_EQ(formatNumber("1234.5", "#,###.##"), "1,234.5");
    EXPECT_EQ(formatNumber("1234", "#,###.##"), "1,234");
    EXPECT_EQ(formatNumber("1234.50", "#,###.##"), "1,234.5");
    EXPECT_EQ(formatNumber("0.5", "#,###.##"), "0.5");
    EXPECT_EQ(formatNumber("0", "#,###.##"), "0");
    EXPECT_EQ(formatNumber("123", "#,###.##"), "123");
    EXPECT_EQ(formatNumber("1234567", "#,###.##"), "1,234,567");
    EXPECT_EQ(formatNumber("-1234.567", "#,###.##"), "-1,234.57");
}

TEST(NumberFormat, knowsTheSevenFormatsOfAList) {
    const char* const number = "1234.1234567";
    EXPECT_EQ(formatNumber(number, "#,###"), "1,234");
    EXPECT_EQ(formatNumber(number, "#,###.#"), "1,234.1");
    EXPECT_EQ(formatNumber(number, "#,###.##"), "1,234.12");
    EXPECT_EQ(formatNumber(number, "#,###.###"), "1,234.123");
    EXPECT_EQ(formatNumber(number, "#,###.####"), "1,234.1235");
    EXPECT_EQ(formatNumber(number, "#,###.#####"), "1,234.12346");
    EXPECT_EQ(formatNumber(number, "#,###.######"), "1,234.123457");
}

TEST(NumberFormat, showsFixedDecimalsWhereTheFormatHasZeros) {
    EXPECT_EQ(formatNumber("1234.5", "#,##0.00"), "1,234.50");
    EXPECT_EQ(formatNumber("0", "#,##0.00"), "0.00");
    EXPECT_EQ(formatNumber("1234.567", "0.00"), "1234.57");
    EXPECT_EQ(formatNumber("1234.567", "0"), "1235");
    EXPECT_EQ(formatNumber("7", "000"), "007");
    EXPECT_EQ(formatNumber("1.5", "0.0##"), "1.5");
}

TEST(NumberFormat, roundsHalfAwayFromZeroOnTheDecimalText) {
    EXPECT_EQ(formatNumber("1.005", "0.00"), "1.01");
    EXPECT_EQ(formatNumber("-1.005", "0.00"), "-1.01");
    EXPECT_EQ(formatNumber("2.5", "0"), "3");
    EXPECT_EQ(formatNumber("999.995", "#,###.##"), "1,000");
    EXPECT_EQ(formatNumber("9.99", "#,###"), "10");
    EXPECT_EQ(formatNumber("0.004", "0.00"), "0.00");
    EXPECT_EQ(formatNumber("-0.004", "0.00"), "0.00");
}

TEST(NumberFormat, keepsHugeNumbersExact) {
    EXPECT_EQ(formatNumber("123456789012345678901234567890.129", "#,###.##"),
              "123,456,789,012,345,678,901,234,567,890.13");
}

TEST(NumberFormat, showsHundredthsWhereTheFormatEndsInAPercentSign) {
    EXPECT_EQ(formatNumber("0.125", "0%"), "13%");
    EXPECT_EQ(formatNumber("0.125", "0.00%"), "12.50%");
    EXPECT_EQ(formatNumber("0.125", "0.##%"), "12.5%");
    EXPECT_EQ(formatNumber("12.5", "#,##0%"), "1,250%");
    EXPECT_EQ(formatNumber("-0.005", "0.0%"), "-0.5%");
    EXPECT_EQ(formatNumber("0", "0%"), "0%");
    EXPECT_EQ(formatNumber("2", "0.0%"), "200.0%");
    EXPECT_EQ(formatNumber("半", "0%"), "半");
}

TEST(NumberFormat, tellsWhichFormatsItUnderstands) {
    for (const char* format : {"0", "#,###.##", "#,##0.00", "0%", "0.00%"})
        EXPECT_TRUE(isNumberFormat(format)) << format;
    for (const char* format : {"", "@", "yyyy-mm-dd", "%"})
        EXPECT_FALSE(isNumberFormat(format)) << format;
}

TEST(NumberFormat, readsTheWaysInWhichAStoreWritesNumbers) {
    EXPECT_EQ(formatNumber("1e+3", "#,###.##"), "1,000");
    EXPECT_EQ(formatNumber("1.5E-2", "#,###.####"), "0.015");
    EXPECT_EQ(formatNumber(".5", "#,###.##"), "0.5");
    EXPECT_EQ(formatNumber("5.", "#,###.##"), "5");
    EXPECT_EQ(formatNumber(" 12 ", "#,###.##"), "12");
    EXPECT_EQ(formatNumber("+12", "#,###.##"), "12");
    EXPECT_EQ(formatNumber("00012.50", "#,###.##"), "12.5");
}

TEST(NumberFormat, leavesWhatIsNoNumberOrNoFormat) {
    for (const char* text : {"", "abc", "12a", "1,234", "-", ".", "1.2.3", "1e", "1e999", "2026-11-20", "--1"}) {
        EXPECT_EQ(formatNumber(text, "#,###.##"), text);
    }
    for (const char* format : {"", "yyyy-mm-dd", "%", "0%%", "#,###.##;(#)", ".00"}) {
        EXPECT_EQ(formatNumber("1234.5", format), "1234.5");
    }
}

}  // namespace
}  // namespace orvenmod::platform
