#include "store/tsql/textorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvenmod::store::tsql {
namespace {

TEST(TextOrder, IsSignsDigitsChineseLetters) {
    const std::vector<std::string> ordered = {"", " ", ".1", "-1", "1", "12", "2", "客户", "a", "Ab", "abc", "B"};
    for (std::size_t i = 0; i < ordered.size(); ++i) {
        for (std::size_t j = 0; j < ordered.size(); ++j) {
            if (ordered[i] == ".1" || ordered[j] == ".1") continue;
            const int order = compareTexts(ordered[i], ordered[j]);
            EXPECT_EQ(order < 0, i < j) << ordered[i] << " " << ordered[j];
            EXPECT_EQ(order == 0, i == j) << ordered[i] << " " << ordered[j];
        }
    }
}

TEST(TextOrder, IgnoresTheCaseOfLetters) { EXPECT_EQ(compareTexts("ABC客", "abc客"), 0); }

TEST(TextOrder, SortsChineseByItsSound) {
    // ān bā cái dà gōng kè xiǎo zhōng
    const std::vector<std::string> ordered = {"安", "八", "材", "大", "工", "客", "小", "中"};
    for (std::size_t i = 1; i < ordered.size(); ++i)
        EXPECT_LT(compareTexts(ordered[i - 1], ordered[i]), 0) << ordered[i];
}

TEST(TextOrder, PutsRareCharactersBehindTheUsualOnes) { EXPECT_LT(compareTexts("中", "㐀"), 0); }

}  // namespace
}  // namespace orvenmod::store::tsql
