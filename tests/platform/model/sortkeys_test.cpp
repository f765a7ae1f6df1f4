// How cells sort.
#include "platform/model/sortkeys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>

namespace orvenmod::platform::model {
namespace {

using Texts = std::vector<std::string>;

Texts sorted(const Texts& cells, ColumnKind kind, SortOrder order = SortOrder::ascending) {
    SortKeys keys(kind, cells.size());
    for (std::size_t slot = cells.size(); slot-- > 0;)
        keys.set(slot, cells[slot]);
    Texts result;
    for (const std::uint32_t slot : keys.sorted().inOrder(order))
        result.push_back(cells[slot]);
    return result;
}

TEST(SortKeys, sortNumbersAsNumbers) {
    EXPECT_EQ(sorted({"10", "9", "-1", "-1.5", "0", "100.01", "100", "0.5", "0.05", "-0.001", "-10", "-1.001"},
                     ColumnKind::number),
              (Texts{"-10", "-1.5", "-1.001", "-1", "-0.001", "0", "0.05", "0.5", "9", "10", "100", "100.01"}));
}

TEST(SortKeys, takeAllDigitsOfALongNumberAndExponents) {
    EXPECT_EQ(
        sorted({"12345678901234567891", "12345678901234567890", "1e+20", "2E-3", "0.0019999"}, ColumnKind::number),
        (Texts{"0.0019999", "2E-3", "12345678901234567890", "12345678901234567891", "1e+20"}));
}

TEST(SortKeys, agreeWithTheArithmeticOnRandomNumbers) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> number(-2000000, 2000000);
    Texts cells;
    std::vector<double> expected;
    for (int i = 0; i < 3000; ++i) {
        const int value = number(random) / (i % 3 == 0 ? 1000 : 1);
        cells.push_back(std::to_string(value / 1000.0));
        expected.push_back(std::stod(cells.back()));
    }
    std::ranges::sort(expected);
    std::vector<double> found;
    for (const std::string& cell : sorted(cells, ColumnKind::number))
        found.push_back(std::stod(cell));
    EXPECT_EQ(found, expected);
}

TEST(SortKeys, putWhatIsNoNumberBehindTheNumbersAndBlanksLast) {
    EXPECT_EQ(sorted({"", "约3", "7", " ", "-2"}, ColumnKind::number), (Texts{"-2", "7", "约3", "", " "}));
    EXPECT_EQ(sorted({"", "7", " ", "-2"}, ColumnKind::number, SortOrder::descending), (Texts{"7", "-2", "", " "}));
}

TEST(SortKeys, areStableBothWaysHoweverLongWhatCellsShareIs) {
    std::mt19937 random(23);
    for (int round = 0; round < 50; ++round) {
        Texts cells;
        for (int i = 0; i < 200; ++i) {
            std::string cell(random() % 5 * 7, 'a');
            for (std::size_t more = random() % 4; more > 0; --more)
                cell += static_cast<char>('a' + random() % 3);
            cells.push_back(cell);
        }
        SortKeys keys(ColumnKind::text, cells.size());
        for (std::size_t slot = 0; slot < cells.size(); ++slot)
            keys.set(slot, cells[slot]);
        const SortedSlots sorted = keys.sorted();
        for (const SortOrder order : {SortOrder::descending, SortOrder::ascending, SortOrder::descending}) {
            std::vector<std::uint32_t> expected(cells.size());
            std::iota(expected.begin(), expected.end(), 0U);
            std::ranges::stable_sort(expected, [&](std::uint32_t left, std::uint32_t right) {
                if (cells[left].empty() || cells[right].empty()) return !cells[left].empty() && cells[right].empty();
                return order == SortOrder::ascending ? cells[left] < cells[right] : cells[left] > cells[right];
            });
            ASSERT_EQ(sorted.inOrder(order), expected) << round;
        }
    }
}

TEST(SortKeys, sortChineseByItsLetters) {
    EXPECT_EQ(sorted({"张三", "螺丝", "安装", "扳手", "内六角", "重量", "开关"}, ColumnKind::text),
              (Texts{"安装", "扳手", "开关", "螺丝", "内六角", "张三", "重量"}));
}

TEST(SortKeys, sortDatesAsDates) {
    EXPECT_EQ(sorted({"2024-10-01 00:00:00", "2024-09-30 23:59:00", "1999-12-31 00:00:00", "2024-09-30 00:00:00"},
                     ColumnKind::text),
              (Texts{"1999-12-31 00:00:00", "2024-09-30 00:00:00", "2024-09-30 23:59:00", "2024-10-01 00:00:00"}));
}

TEST(SortKeys, keepEqualCellsInTheirOrderBothWays) {
    const Texts cells = {"b", "A", "a", "B", "a", "０1", "01"};
    EXPECT_EQ(sorted(cells, ColumnKind::text), (Texts{"０1", "01", "A", "a", "a", "b", "B"}));
    EXPECT_EQ(sorted(cells, ColumnKind::text, SortOrder::descending), (Texts{"b", "B", "A", "a", "a", "０1", "01"}));
    const Texts longer = {"", "内六角圆柱头B", "内六角圆柱头b", "", "内六角圆柱头A", "内六角圆柱头a"};
    EXPECT_EQ(sorted(longer, ColumnKind::text),
              (Texts{"内六角圆柱头A", "内六角圆柱头a", "内六角圆柱头B", "内六角圆柱头b", "", ""}));
    EXPECT_EQ(sorted(longer, ColumnKind::text, SortOrder::descending),
              (Texts{"内六角圆柱头B", "内六角圆柱头b", "内六角圆柱头A", "内六角圆柱头a", "", ""}));
    EXPECT_EQ(sorted({" ", ""}, ColumnKind::number, SortOrder::descending), (Texts{" ", ""}));
}

TEST(SortKeys, tellLongTextsApartByTheirEnds) {
    Texts cells;
    for (int i = 0; i < 300; ++i)
        cells.push_back("01.002.003.0004.货品." + std::to_string(1000 + (i * 7) % 300));
    Texts expected = cells;
    std::ranges::sort(expected);
    EXPECT_EQ(sorted(cells, ColumnKind::text), expected);
}

}  // namespace
}  // namespace orvenmod::platform::model
