// The sort key orders as the embedded store's collation does.
#include <gtest/gtest.h>

#include <random>

#include "store/postgres/runtime/bothstores.h"
#include "store/tsql/textorder.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::postgres {
namespace {

constexpr unsigned kSeed = 20261121;

std::string character(char32_t code) {
    std::string result;
    tsql::appendCharacter(result, code);
    return result;
}

// Every kind of character that the order tells apart, and those at its borders.
char32_t anyCharacter(std::mt19937& random) {
    static constexpr std::pair<char32_t, char32_t> kRanges[] = {
        {0x20, 0x7E},       {'0', '9'},          {'A', 'Z'},       {'a', 'z'},       {0x4E00, 0x9FA5},
        {0x4E00, 0x9FA5},   {0x5200, 0x5400},    {0x7F, 0xFF},     {0x391, 0x3C9},   {0x400, 0x45F},
        {0x2010, 0x2040},   {0x2190, 0x2300},    {0x2500, 0x27FF}, {0x2E70, 0x2FE0}, {0x3000, 0x303F},
        {0x3041, 0x30FF},   {0x3400, 0x3410},    {0x9FA0, 0xA010}, {0xAC00, 0xAF00}, {0xE200, 0xE300},
        {0xE800, 0xE820},   {0xF8F0, 0xFB10},    {0xFF00, 0xFF5E}, {0xFFE0, 0xFFE6}, {0x1F600, 0x1F64F},
        {0x20000, 0x20010}, {0x10FFF0, 0x10FFFF}};
    const auto& [low, high] = kRanges[random() % std::size(kRanges)];
    return low + static_cast<char32_t>(random() % (high - low + 1));
}

std::string anyText(std::mt19937& random) {
    std::string result;
    // Few kinds in most texts, so that every way of making a key is taken.
    const auto kinds = random() % 4;
    for (auto length = random() % 6; length > 0; --length) {
        const char32_t any = anyCharacter(random);
        const bool taken = kinds == 3 || any < 0x80 || (kinds >= 1 && any >= 0x4E00 && any <= 0x9FA5) ||
                           (kinds == 2 && ((any >= 0x3000 && any < 0x3040) || (any >= 0xFF00 && any < 0xFF10)));
        result += character(taken ? any : U'a' + any % 26);
    }
    return result;
}

std::string literal(const std::string& text) {
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? "''" : std::string(1, c);
    return result + "'::text";
}

std::string ordered(const std::string& left, const std::string& right) {
    const auto bare = [](const std::string& text) { return tsql::withoutTrailingBlanks(text); };
    const int order = tsql::compareTexts(bare(left), bare(right));
    return std::to_string((order > 0) - (order < 0));
}

std::string orderedThere(const std::string& left, const std::string& right) {
    return "(SELECT (a > b)::integer - (a < b)::integer FROM (SELECT orven.ts_order(" + literal(left) +
           ") AS a, orven.ts_order(" + literal(right) + ") AS b) AS keys)";
}

TEST(PostgresTextOrder, IsThatOfTheEmbeddedStore) {
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    constexpr int kPairs = 300, kInOneCall = 100;
    for (int i = 0; i < kPairs; ++i) {
        std::string expected, call = "array_to_string(ARRAY[";
        std::string texts;
        for (int j = 0; j < kInOneCall; ++j) {
            const std::string left = anyText(random);
            // Half of the pairs differ late.
            const std::string right = random() % 2 == 0 ? anyText(random) : left + anyText(random);
            expected += (j == 0 ? "" : ",") + ordered(left, right);
            call += (j == 0 ? "" : ", ") + orderedThere(left, right);
            texts += "[" + left + "][" + right + "]";
        }
        ASSERT_EQ(bothStores().server(call + "], ',')"), expected) << texts;
    }
}

TEST(PostgresTextOrder, OfEveryCharacterIsThatOfTheEmbeddedStore) {
    // Each beside the one before it in the server's order: where all of these stand rightly, any two do.
    std::string all;
    for (char32_t c = 0x20; c < 0x1'0000; ++c) {
        if (c >= 0xD800 && c < 0xE000) continue;
        all += character(c) + "\n";
    }
    const std::string sorted = bothStores().server(
        "(SELECT string_agg(c, E'\\n' ORDER BY orven.ts_order('x' || c || 'y'), c COLLATE \"C\") "
        "FROM string_to_table(" +
        literal(all) + ", E'\\n') AS c WHERE c <> '')");
    std::string before;
    std::size_t count = 0;
    for (std::size_t at = 0; at < sorted.size(); ++count) {
        const std::size_t end = std::min(sorted.find('\n', at), sorted.size());
        const std::string here = "x" + sorted.substr(at, end - at) + "y";
        ASSERT_TRUE(before.empty() || tsql::compareTexts(before, here) <= 0) << before << " before " << here;
        before = here;
        at = end + 1;
    }
    EXPECT_EQ(count, 0x1'0000U - 0x20U - 0x800U);
}

TEST(PostgresTextOrder, IgnoresTrailingBlanksAndCase) {
    EXPECT_EQ(bothStores().server("orven.ts_order('Abc中  ') = orven.ts_order('aBC中')"), "1");
    EXPECT_EQ(bothStores().server("orven.ts_order(NULL)"), "null");
}

TEST(PostgresTextOrder, FindsTheLeastAndTheGreatestText) {
    const std::string rows = " FROM (VALUES ('b'), ('中'), ('啊'), ('A1'), (NULL), ('9')) AS t (x))";
    EXPECT_EQ(bothStores().server("(SELECT orven.ts_min(x)" + rows), "9");
    EXPECT_EQ(bothStores().server("(SELECT orven.ts_max(x)" + rows), "b");
}

}  // namespace
}  // namespace orvenmod::store::postgres
