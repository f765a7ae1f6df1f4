#include "store/tsql/like.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "store/tsql/utf8.h"

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

/// The plain meaning of a pattern of %, _ and other characters.
bool means(std::u32string_view text, std::u32string_view pattern) {
    if (pattern.empty()) return text.find_first_not_of(U' ') == text.npos;
    if (pattern[0] == U'%') {
        return pattern.size() == 1 || means(text, pattern.substr(1)) ||
               (!text.empty() && means(text.substr(1), pattern));
    }
    const auto lower = [](char32_t c) { return c >= U'A' && c <= U'Z' ? c + 32 : c; };
    return !text.empty() && (pattern[0] == U'_' || lower(pattern[0]) == lower(text[0])) &&
           means(text.substr(1), pattern.substr(1));
}

TEST(Like, FindsNoByteWithinACharacter) {
    EXPECT_FALSE(like("中", "%\xAD%"));
    EXPECT_TRUE(like("中\xAD", "%\xAD%"));
    EXPECT_FALSE(like("中", "%\xE4%"));
}

TEST(Like, MeansWhatEachCharacterMeans) {
    const std::u32string_view signs = U"aAb%_ 中丰é\xDCFF\xDCE4";
    const auto bytes = [](const std::u32string& text) {
        std::string result;
        for (const char32_t c : text) {
            if (c >= 0xDC80 && c <= 0xDCFF) {
                result += static_cast<char>(c - 0xDC00);
            } else {
                appendCharacter(result, c);
            }
        }
        return result;
    };
    std::mt19937 random(18);
    const auto any = [&](std::size_t most) {
        std::u32string text(random() % most, U' ');
        for (char32_t& c : text)
            c = signs[random() % signs.size()];
        return text;
    };
    for (int run = 0; run < 100000; ++run) {
        const std::u32string text = any(9);
        const std::u32string pattern = any(6);
        ASSERT_EQ(like(bytes(text), bytes(pattern)), means(text, pattern)) << bytes(text) << " like " << bytes(pattern);
    }
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
