#include "frame/conversion.h"

#include <gtest/gtest.h>

namespace orvenmod::test {
namespace {

template <class Work>
std::pair<int, std::string> failureOf(Work work) {
    try {
        work();
    } catch (const ConversionFailure& failure) {
        return {failure.number(), failure.what()};
    }
    return {0, ""};
}

const std::pair<int, std::string> kMismatch{13, "类型不匹配"};
const std::pair<int, std::string> kOverflow{6, "溢出"};

TEST(Conversion, aNumberMayHaveOuterBlanksAndASign) {
    EXPECT_EQ(toInt32("  42 "), 42);
    EXPECT_EQ(toInt32("+7"), 7);
    EXPECT_EQ(toInt16("-12"), -12);
    EXPECT_EQ(toDouble(" .5"), 0.5);
}

TEST(Conversion, aFractionIsRoundedHalfToEven) {
    EXPECT_EQ(toInt16("0.5"), 0);
    EXPECT_EQ(toInt16("1.5"), 2);
    EXPECT_EQ(toInt16("2.5"), 2);
    EXPECT_EQ(toInt32("-3.5"), -4);
    EXPECT_EQ(toInt32("2.51"), 3);
}

TEST(Conversion, aTextThatIsNoNumberIsAMismatch) {
    for (const char* text : {"", " ", "abc", "1a", "1 2", "--1", "+", ".", "inf", "nan", "0x1F", "1,234"}) {
        EXPECT_EQ(failureOf([&] { toInt16(text); }), kMismatch) << text;
        EXPECT_EQ(failureOf([&] { toDouble(text); }), kMismatch) << text;
    }
}

TEST(Conversion, aNumberThatDoesNotFitIsAnOverflow) {
    EXPECT_EQ(toInt16("32767.4"), 32767);
    EXPECT_EQ(failureOf([] { toInt16("32767.5"); }), kOverflow);
    EXPECT_EQ(failureOf([] { toInt16("-32769"); }), kOverflow);
    EXPECT_EQ(toInt32("2147483647"), 2147483647);
    EXPECT_EQ(failureOf([] { toInt32("2147483648"); }), kOverflow);
    EXPECT_EQ(failureOf([] { toDouble("1e999"); }), kOverflow);
}

TEST(Conversion, aNullThatMustNotBeIsAFailureOfItsOwn) {
    EXPECT_EQ(required("x"), "x");
    EXPECT_EQ(failureOf([] { required(std::nullopt); }), std::make_pair(94, std::string("无效使用 Null")));
}

TEST(Conversion, theLeadingNumberStopsAtTheFirstForeignCharacter) {
    EXPECT_EQ(leadingNumber("1,234.5"), 1);
    EXPECT_EQ(leadingNumber("12.5箱"), 12.5);
    EXPECT_EQ(leadingNumber("-3 x"), -3);
    EXPECT_EQ(leadingNumber(""), 0);
    EXPECT_EQ(leadingNumber("箱12"), 0);
    EXPECT_EQ(leadingNumber("infinite"), 0);
}

TEST(Conversion, isNumericLooksAtTheWholeText) {
    EXPECT_TRUE(isNumeric(" 12.5 "));
    EXPECT_TRUE(isNumeric("-0"));
    EXPECT_FALSE(isNumeric("12,5"));
    EXPECT_FALSE(isNumeric(""));
}

TEST(Conversion, trimTakesOuterBlanksOnly) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim("   "), "");
}

}  // namespace
}  // namespace orvenmod::test
