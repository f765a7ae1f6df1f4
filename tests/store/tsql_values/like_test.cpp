#include "store/tsql/like.h"

#include <gtest/gtest.h>

namespace orvenmod::store::tsql {
namespace {

TEST(Like, MatchesAnyTextForThePercentSign) {
    EXPECT_TRUE(like("abc", "a%"));
    EXPECT_TRUE(like("abc", "%c"));
    EXPECT_TRUE(like("abc", "%b%"));
    EXPECT_TRUE(like("", "%"));
    EXPECT_TRUE(like("abc", "%%"));
    EXPECT_FALSE(like("abc", "%d%"));
    EXPECT_TRUE(like("aXbXc", "a%b%c"));
    EXPECT_FALSE(like("abc", "abcd%"));
}

TEST(Like, MatchesOneCharacterForTheUnderscore) {
    EXPECT_TRUE(like("abc", "a_c"));
    EXPECT_TRUE(like("客户", "客_"));
    EXPECT_FALSE(like("ac", "a_c"));
}

TEST(Like, MatchesOneOfASetOrARange) {
    EXPECT_TRUE(like("abc", "a[bx]c"));
    EXPECT_TRUE(like("abc", "a[a-c]c"));
    EXPECT_FALSE(like("adc", "a[a-c]c"));
    EXPECT_TRUE(like("adc", "a[^a-c]c"));
    EXPECT_FALSE(like("abc", "a[^b]c"));
    EXPECT_TRUE(like("50%", "50[%]"));
    EXPECT_TRUE(like("a_b", "a[_]b"));
    EXPECT_FALSE(like("axb", "a[_]b"));
    EXPECT_TRUE(like("a[b", "a[[]b"));
    EXPECT_TRUE(like("a-b", "a[x-]b"));
    EXPECT_TRUE(like("客", "[一-龥]"));
}

TEST(Like, MatchesNothingForASetThatIsNotClosed) { EXPECT_FALSE(like("a[b", "a[b")); }

TEST(Like, IgnoresTheCaseOfLetters) {
    EXPECT_TRUE(like("ABC", "abc"));
    EXPECT_TRUE(like("abc", "A[A-C]C"));
}

TEST(Like, TakesTheCharacterBehindTheEscapeAsItIs) {
    EXPECT_TRUE(like("50%", "50!%", U'!'));
    EXPECT_FALSE(like("50x", "50!%", U'!'));
    EXPECT_TRUE(like("a!b", "a!!b", U'!'));
}

TEST(Like, LeavesBlanksAtTheEndOfTheTextAside) {
    EXPECT_TRUE(like("abc  ", "abc"));
    EXPECT_FALSE(like("abc", "abc "));
    EXPECT_TRUE(like("abc  ", "abc%"));
}

TEST(Like, EndsSoonOnAPatternOfManyPercentSigns) {
    const std::string text(2000, 'a');
    EXPECT_FALSE(like(text, "%a%a%a%a%a%a%a%a%b"));
}

TEST(PatternIndex, IsThePlaceOfTheFirstMatch) {
    EXPECT_EQ(patternIndex("%b%", "abcb"), 2U);
    EXPECT_EQ(patternIndex("%[0-9]%", "客户12"), 3U);
    EXPECT_EQ(patternIndex("a%", "abc"), 1U);
    EXPECT_EQ(patternIndex("b%", "abc"), 0U);
    EXPECT_EQ(patternIndex("%c", "abc"), 3U);
    EXPECT_EQ(patternIndex("%x%", "abc"), 0U);
}

TEST(PlainPrefix, EndsAtTheFirstWildcard) {
    EXPECT_EQ(plainPrefix(".12.%"), ".12.");
    EXPECT_EQ(plainPrefix("a_b"), "a");
    EXPECT_EQ(plainPrefix("%a"), "");
    EXPECT_EQ(plainPrefix("abc"), "abc");
}

TEST(ServerPattern, FoldsAndKeepsABackslashAsItIs) {
    EXPECT_TRUE(isPlainPattern("a%"));
    EXPECT_FALSE(isPlainPattern("a"));
    EXPECT_FALSE(isPlainPattern("[ab]%"));
    EXPECT_EQ(serverPattern("A\\_客%"), "a\\\\_客%");
}

TEST(ServerPattern, BecomesAnExpressionThatLetsBlanksBeLeftOver) {
    EXPECT_EQ(serverExpression("A_b"), "^a.b *$");
    EXPECT_EQ(serverExpression("%.客"), "^.*\\U0000002E客 *$");
    EXPECT_EQ(serverExpression("[A-C]x"), "^[\\U00000061-\\U00000063]x *$");
    EXPECT_EQ(serverExpression("[^]a]"), "^[^\\U0000005D\\U00000061] *$");
}

TEST(ServerPattern, MatchesNothingWhereASetIsNotClosed) {
    EXPECT_EQ(serverExpression("a[b"), ".^");
    EXPECT_EQ(serverExpression("a[c-b]"), ".^");
}

}  // namespace
}  // namespace orvenmod::store::tsql
