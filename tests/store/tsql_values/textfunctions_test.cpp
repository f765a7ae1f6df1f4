#include "conversions.h"
#include "store/tsql/functions.h"

namespace orvenmod::store::tsql::test {
namespace {

TEST(TextFunctions, CutPartsByCharacters) {
    EXPECT_EQ(leftPart("客户a", 2), "客户");
    EXPECT_EQ(leftPart("ab", 9), "ab");
    EXPECT_EQ(rightPart("客户a", 2), "户a");
    EXPECT_EQ(rightPart("ab", 9), "ab");
    EXPECT_EQ(failureOf([] { leftPart("a", -1); }), 536);
    EXPECT_EQ(substring("客户资料", 2, 2), "户资");
    EXPECT_EQ(substring("abc", 0, 2), "a");
    EXPECT_EQ(substring("abc", -5, 3), "");
    EXPECT_EQ(substring("abc", 2, 99), "bc");
    EXPECT_EQ(substring("abc", 9, 2), "");
    EXPECT_EQ(failureOf([] { substring("a", 1, -1); }), 537);
}

TEST(TextFunctions, ReplaceAndFindWithoutRegardToCase) {
    EXPECT_EQ(replaceAll("AbcB", "b", "x"), "Axcx");
    EXPECT_EQ(replaceAll("客户B户", "户", ""), "客B");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(charIndex("B", "ab客b", 1), 2);
    EXPECT_EQ(charIndex("b", "ab客b", 3), 4);
    EXPECT_EQ(charIndex("x", "abc", 1), 0);
    EXPECT_EQ(charIndex("", "abc", 1), 0);
    EXPECT_EQ(charIndex("a", "abc", -3), 1);
}

TEST(TextFunctions, TurnRepeatAndStuff) {
    EXPECT_EQ(reversed("a客b"), "b客a");
    EXPECT_EQ(replicated("ab", 3), "ababab");
    EXPECT_EQ(replicated("ab", 0), "");
    EXPECT_EQ(stuffed("客户", 1, 1, "Z"), "Z户");
    EXPECT_EQ(stuffed("abc", 2, 99, "Z"), "aZ");
    EXPECT_EQ(stuffed("abc", 2, 0, "Z"), "aZbc");
    EXPECT_EQ(stuffed("abc", 0, 1, "Z"), std::nullopt);
    EXPECT_EQ(stuffed("abc", 4, 1, "Z"), std::nullopt);
    EXPECT_EQ(stuffed("abc", 1, -1, "Z"), std::nullopt);
}

TEST(Str, AlignsToTheRightAndRoundsHalfAwayFromZero) {
    EXPECT_EQ(strOf(12, 10, 0), "        12");
    EXPECT_EQ(strOf(12.5, 10, 0), "        13");
    EXPECT_EQ(strOf(-2.5, 5, 0), "   -3");
    EXPECT_EQ(strOf(12.345, 6, 2), " 12.35");
    EXPECT_EQ(strOf(12345, 3, 0), "***");
    EXPECT_EQ(strOf(123.456, 6, 3), "123.46");
}

TEST(IsNumeric, AcceptsNumbersAndMoney) {
    for (const char* value : {"12", "-1.5", "1e3", "$5", "1,000", " 7 ", ".5", "5.", "-", "+.5"}) {
        EXPECT_TRUE(isNumeric(value)) << value;
    }
    for (const char* value : {"", "abc", "1a", "1e", "--1", "1.2.3", "客"})
        EXPECT_FALSE(isNumeric(value)) << value;
}

TEST(IsDate, AcceptsWhatADateColumnTakes) {
    EXPECT_TRUE(isDate("2026-02-28"));
    EXPECT_FALSE(isDate("2026-02-30"));
    EXPECT_FALSE(isDate("abc"));
    EXPECT_FALSE(isDate(""));
}

TEST(QuotedName, DoublesTheClosingSign) {
    EXPECT_EQ(quotedName("a]b", "["), "[a]]b]");
    EXPECT_EQ(quotedName("a'b", "'"), "'a''b'");
    EXPECT_EQ(quotedName("a", "x"), std::nullopt);
}

TEST(Soundex, IsALetterAndThreeDigits) {
    EXPECT_EQ(soundex("Robert"), "R163");
    EXPECT_EQ(soundex("Smith"), soundex("smyth"));
    EXPECT_EQ(soundex(""), "0000");
}

TEST(DataLength, IsThatOfTheServer) {
    EXPECT_EQ(dataLength(text("客户a"), *parseType("varchar(10)")), 5);
    EXPECT_EQ(dataLength(text("客户a"), *parseType("nvarchar(10)")), 6);
    EXPECT_EQ(dataLength(integer(5), *parseType("int")), 4);
    EXPECT_EQ(dataLength(integer(5), *parseType("decimal(18,4)")), 9);
}

}  // namespace
}  // namespace orvenmod::store::tsql::test
