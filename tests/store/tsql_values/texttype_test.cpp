#include "conversions.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql::test {
namespace {

std::string cast(const std::string& value, const std::string& to) { return toText(text(value), "varchar(max)", to); }

TEST(TextType, CountsAChineseCharacterAsTwoBytes) {
    EXPECT_EQ(cast("一二三四五", "varchar(10)"), "一二三四五");
    EXPECT_EQ(refused("一二三四五1", "varchar(10)", true), 2628);
    EXPECT_EQ(cast("一二三四五", "nvarchar(5)"), "一二三四五");
    EXPECT_EQ(refused("一二三四五六", "nvarchar(5)", true), 2628);
}

TEST(TextType, IsCutByACastButNeverWithinACharacter) {
    EXPECT_EQ(cast("abc", "varchar(2)"), "ab");
    EXPECT_EQ(cast("客户", "varchar(2)"), "客");
    EXPECT_EQ(cast("客户", "varchar(3)"), "客");
    EXPECT_EQ(cast("a客户", "varchar(2)"), "a");
    EXPECT_EQ(cast("客户", "nvarchar(1)"), "客");
}

TEST(TextType, RefusesATooLongTextInItsColumnAndTellsWhatWouldStay) {
    ConvertMode mode;
    mode.assignment = true;
    mode.table = "t";
    mode.column = "c";
    try {
        converted(text("客户资料"), "varchar(max)", "varchar(5)", mode);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 2628);
        EXPECT_EQ(error.arguments(), (std::vector<std::string>{"t", "c", "客户"}));
    }
}

TEST(TextType, DropsBlanksBehindItsEndSilently) {
    EXPECT_EQ(refused("abc      ", "varchar(5)", true), 0);
    ConvertMode mode;
    mode.assignment = true;
    EXPECT_EQ(converted(text("abc      "), "varchar(max)", "varchar(5)", mode).text, "abc  ");
}

TEST(TextType, OfFixedLengthIsFilledWithBlanks) {
    EXPECT_EQ(cast("ab", "char(5)"), "ab   ");
    EXPECT_EQ(cast("客", "char(5)"), "客   ");
    EXPECT_EQ(cast("客", "nchar(3)"), "客  ");
}

TEST(TextType, WithoutALimitTakesEverything) {
    const std::string large(100'000, 'x');
    EXPECT_EQ(cast(large, "varchar(max)"), large);
    EXPECT_EQ(cast(large, "text"), large);
}

TEST(Utf8, StepsOverBrokenBytesOneByOne) {
    const std::string broken = "a\xFF\xE5\xAE";
    std::size_t at = 0;
    int steps = 0;
    while (at < broken.size()) {
        nextCharacter(broken, at);
        ++steps;
    }
    EXPECT_EQ(steps, 4);
    EXPECT_EQ(upperText(broken), "A\xFF\xE5\xAE");
}

TEST(Utf8, ChangesTheCaseOfLettersBeyondAscii) {
    EXPECT_EQ(upperText("abcé客ａж"), "ABCÉ客ＡЖ");
    EXPECT_EQ(lowerText("ABCÉ客ＡЖ"), "abcé客ａж");
}

}  // namespace
}  // namespace orvenmod::store::tsql::test
