// Cells that a column shows blank.
#include "platform/contract/listgrid.h"

namespace orvenmod::test {
namespace {

using namespace platform;
using Texts = std::vector<std::string>;

bool isNought(std::string_view text) { return text == "0"; }

std::shared_ptr<TextRows> quantities() {
    return std::make_shared<TextRows>(std::vector<Texts>{{"1", "0"}, {"2", "7"}, {"3", "-5"}, {"0", "NULL"}});
}

/// Blanks noughts in the second column, which holds numbers.
void blankNoughts(Window& window) {
    auto& grid = window.get<ListGrid>("vsf1");
    grid.bind(quantities());
    grid.setColumnKind(1, ColumnKind::number);
    grid.setColumnBlanked(1, isNought);
}

Texts columnOf(const ListGrid& grid, int column) {
    Texts texts;
    for (int row = 1; row < grid.rowCount(); ++row)
        texts.push_back(grid.text(row, column));
    return texts;
}

TEST_F(ToolkitContract, aBlankedCellIsBlankInItsColumnAlone) {
    use(listWindow(0), blankNoughts, [](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        EXPECT_EQ(columnOf(grid, 1), (Texts{"", "7", "-5", ""}));
        EXPECT_EQ(grid.value(1, 1), "");
        EXPECT_EQ(columnOf(grid, 0), (Texts{"1", "2", "3", "0"}));
    });
}

TEST_F(ToolkitContract, aBlankedCellSortsAsABlank) {
    use(listWindow(0), blankNoughts, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.sort(1, SortOrder::ascending);
        EXPECT_EQ(columnOf(grid, 0), (Texts{"3", "2", "1", "0"}));
        grid.setColumnBlanked(1, nullptr);
        grid.sort(1, SortOrder::ascending);
        EXPECT_EQ(columnOf(grid, 0), (Texts{"3", "1", "2", "0"}));
    });
}

TEST_F(ToolkitContract, aBlankedCellIsNotFound) {
    use(listWindow(0), blankNoughts, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.narrow("0");
        EXPECT_EQ(columnOf(grid, 0), (Texts{"0"}));
    });
}

TEST_F(ToolkitContract, rowsThatAreBoundBlankNothingUntilTheyAreTold) {
    use(listWindow(0), blankNoughts, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(quantities());
        EXPECT_EQ(columnOf(grid, 1), (Texts{"0", "7", "-5", ""}));
    });
}

}  // namespace
}  // namespace orvenmod::test
