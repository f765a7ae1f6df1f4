// What the contract of the list grid can't see: colours, and edits in any order.
#include "platform/model/listgridmodel.h"

#include <gtest/gtest.h>

#include <random>

namespace orvenmod::platform::model {
namespace {

class Numbers final : public RowSource {
public:
    explicit Numbers(std::size_t count) : count_(count) {}
    std::size_t rowCount() const override { return count_; }
    int columnCount() const override { return 1; }
    std::optional<std::string_view> cell(std::size_t row, int) const override {
        text_ = std::to_string(row);
        return text_;
    }

private:
    std::size_t count_;
    mutable std::string text_;
};

TEST(ListGridModel, aColourStaysWithItsRow) {
    ListGridModel grid({}, 1);
    grid.bind(std::make_shared<Numbers>(5));
    const Colour red{175, 0, 0};
    grid.setRowColour(3, &red);
    EXPECT_EQ(grid.rowColour(2), nullptr);
    grid.removeRow(1);
    ASSERT_NE(grid.rowColour(2), nullptr);
    EXPECT_EQ(*grid.rowColour(2), red);
    grid.setRowColour(2, nullptr);
    EXPECT_EQ(grid.rowColour(2), nullptr);
}

TEST(ListGridModel, aRowAddedInThePlaceOfARemovedOneStartsPlain) {
    ListGridModel grid({{.title = "代码"}}, 0);
    grid.addRow("A");
    const Colour red{175, 0, 0};
    grid.setRowColour(1, &red);
    grid.setCurrentRow(1);
    grid.removeRow(1);
    grid.addRow("B");
    EXPECT_EQ(grid.value(1, 0), "B");
    EXPECT_EQ(grid.rowColour(1), nullptr);
    EXPECT_FALSE(grid.isSelected(1));
    EXPECT_EQ(grid.currentRow(), 0);
}

TEST(ListGridModel, aBoundGridTakesNoRowsOfItsOwnUntilItIsCutBack) {
    ListGridModel grid({}, 0);
    grid.bind(std::make_shared<Numbers>(5));
    EXPECT_THROW(grid.addRow("x"), std::logic_error);
    EXPECT_THROW(grid.setRowCount(3), std::logic_error);
    EXPECT_EQ(grid.rowCount(), 6);
    grid.setRowCount(1);
    EXPECT_FALSE(grid.bound());
    grid.addRow("x");
    EXPECT_EQ(grid.value(1, 0), "x");
}

TEST(ListGridModel, selectingRowsOneAfterTheOtherIsQuickInAMillion) {
    ListGridModel grid({}, 0);
    grid.bind(std::make_shared<Numbers>(1000000));
    for (int row = 1; row <= 1000000; ++row)
        grid.setCurrentRow(row);
    EXPECT_EQ(grid.selectedCount(), 1U);
    EXPECT_TRUE(grid.isSelected(1000000));
    EXPECT_FALSE(grid.isSelected(999999));
}

TEST(ListGridModel, followsAPlainTableThroughRandomEdits) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    ListGridModel grid({}, 1);
    grid.bind(std::make_shared<Numbers>(300));
    std::vector<std::string> plain;
    std::vector<bool> selected(300);
    std::size_t current = 0;
    selected.front() = true;  // as a binding leaves it
    for (int row = 0; row < 300; ++row)
        plain.push_back(std::to_string(row));
    for (int step = 0; step < 3000 && !plain.empty(); ++step) {
        const std::size_t at = random() % plain.size();
        const int row = static_cast<int>(at) + 1;
        const auto action = random() % 10;
        if (action == 0) {
            grid.removeRow(row);
            plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(at));
            const bool marked = at == current && selected[at];
            selected.erase(selected.begin() + static_cast<std::ptrdiff_t>(at));
            if (at < current || current == plain.size()) --current;
            if (marked && !plain.empty()) selected[current] = true;
        } else if (action < 6) {
            plain[at] = action < 3 ? "" : "w" + std::to_string(step);
            grid.setText(row, 1, plain[at]);
        } else {
            selected[at] = action < 8;
            grid.setSelected(row, selected[at]);
        }
        if (plain.empty()) break;
        const std::size_t seen = random() % plain.size();
        ASSERT_EQ(grid.value(static_cast<int>(seen) + 1, 1), plain[seen]);
        ASSERT_EQ(grid.isSelected(static_cast<int>(seen) + 1), selected[seen]);
        ASSERT_EQ(grid.rowCount(), static_cast<int>(plain.size()) + 1);
        ASSERT_EQ(grid.currentRow(), static_cast<int>(current) + 1);
    }
}

TEST(ListGridModel, showsADateWithoutATimeThatIsMidnight) {
    ListGridModel grid({{.title = "a"}, {.title = "b"}, {.title = "c"}}, 0);
    grid.addRow("2024-06-07 00:00:00\t2024-06-07 08:30:00\t货 00:00:00");
    EXPECT_EQ(grid.text(1, 0), "2024-06-07");
    EXPECT_EQ(grid.value(1, 0), "2024-06-07 00:00:00");
    EXPECT_EQ(grid.text(1, 1), "2024-06-07 08:30:00");
    EXPECT_EQ(grid.text(1, 2), "货 00:00:00");
}

}  // namespace
}  // namespace orvenmod::platform::model
