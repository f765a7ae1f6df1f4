// Current row, selection and the events of the list grid.
#include <stdexcept>
#include <vector>

#include "platform/contract/listgrid.h"

namespace orvenmod::test {
namespace {

using namespace platform;

void fill(Window& window) {
    for (const char* row : {"\t1\tA", "\t2\tB", "\t3\tC", "\t4\tD"})
        window.get<ListGrid>("vsf1").addRow(row);
}

std::vector<int> selectedRows(const ListGrid& grid) {
    std::vector<int> rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        if (grid.isSelected(row)) rows.push_back(row);
    }
    return rows;
}

TEST_F(ToolkitContract, noRowIsCurrentAfterFilling) {
    use(listWindow(), fill, [](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        EXPECT_EQ(grid.currentRow(), 0);
        EXPECT_TRUE(selectedRows(grid).empty());
    });
}

TEST_F(ToolkitContract, theFirstRowIsCurrentAndSelectedAfterBinding) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.setCurrentRow(2);
        grid.setSelected(4, true);
        grid.bind(std::make_shared<TextRows>(std::vector<std::vector<std::string>>{{"1", "A"}, {"2", "B"}}));
        EXPECT_EQ(grid.currentRow(), 1);
        EXPECT_EQ(selectedRows(grid), std::vector<int>{1});
        grid.setFocus();
        user.press("Down");
        EXPECT_EQ(grid.currentRow(), 2);
        grid.bind(std::make_shared<TextRows>(std::vector<std::vector<std::string>>{}));
        EXPECT_EQ(grid.currentRow(), 0);
    });
}

TEST_F(ToolkitContract, theCurrentRowIsTheOnlySelectedOne) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.setCurrentRow(3);
        EXPECT_EQ(grid.currentRow(), 3);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{3}));
        grid.setSelected(1, true);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{1, 3}));
        EXPECT_EQ(grid.currentRow(), 3);
        grid.setSelected(3, false);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{1}));
        grid.setCurrentRow(2);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{2}));
    });
}

TEST_F(ToolkitContract, theCurrentRowFollowsARemoval) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.setCurrentRow(3);
        grid.removeRow(1);
        EXPECT_EQ(grid.currentRow(), 2);
        EXPECT_EQ(grid.text(2, 2), "C");
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{2}));
        grid.removeRow(2);
        EXPECT_EQ(grid.currentRow(), 2);
        EXPECT_EQ(grid.text(2, 2), "D");
        grid.removeRow(2);
        EXPECT_EQ(grid.currentRow(), 1);
        grid.removeRow(1);
        EXPECT_EQ(grid.currentRow(), 0);
    });
}

TEST_F(ToolkitContract, cuttingTheGridBackLeavesNoRowCurrent) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.setCurrentRow(3);
        grid.setRowCount(1);
        EXPECT_EQ(grid.currentRow(), 0);
        grid.addRow("\t9\tX");
        EXPECT_EQ(grid.currentRow(), 0);
        EXPECT_EQ(grid.text(1, 2), "X");
    });
}

TEST_F(ToolkitContract, theUserSelectsOneRowOrSeveral) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        user.selectRow("vsf1", 2);
        EXPECT_EQ(grid.currentRow(), 2);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{2}));
        user.alsoSelectRow("vsf1", 4);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{2, 4}));
        EXPECT_EQ(grid.currentRow(), 4);
        user.alsoSelectRow("vsf1", 2);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{4}));
        user.selectRow("vsf1", 1);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{1}));
    });
}

TEST_F(ToolkitContract, aDoubleClickMakesTheRowCurrentAndRaisesTheEvent) {
    std::vector<int> rows;
    use(
        listWindow(),
        [&](Window& window) {
            fill(window);
            window.get<ListGrid>("vsf1").doubleClick = [&] {
                rows.push_back(window.get<ListGrid>("vsf1").currentRow());
            };
        },
        [](User& user) {
            user.doubleClickRow("vsf1", 3);
            user.doubleClickRow("vsf1", 0);
        });
    EXPECT_EQ(rows, std::vector<int>{3}) << "the heading is no row";
}

TEST_F(ToolkitContract, aDoubleClickOnTheHeadingOfAnEmptyGridRaisesNothing) {
    int clicks = 0;
    use(
        listWindow(), [&](Window& window) { window.get<ListGrid>("vsf1").doubleClick = [&] { ++clicks; }; },
        [](User& user) { user.doubleClickRow("vsf1", 0); });
    EXPECT_EQ(clicks, 0);
}

TEST_F(ToolkitContract, aRightClickOnARowMakesItCurrentFirst) {
    std::vector<int> rows;
    use(
        listWindow(),
        [&](Window& window) {
            fill(window);
            auto& grid = window.get<ListGrid>("vsf1");
            grid.setCurrentRow(1);
            grid.mouseDown = [&](MouseButton button) {
                if (button == MouseButton::right) rows.push_back(grid.currentRow());
            };
        },
        [](User& user) {
            user.rightClickRow("vsf1", 3, "");
            EXPECT_EQ(selectedRows(user.control<ListGrid>("vsf1")), std::vector<int>{3});
        });
    EXPECT_EQ(rows, std::vector<int>{3});
}

TEST_F(ToolkitContract, aRightClickOnOneOfSeveralSelectedRowsLeavesItTheOnlyOne) {
    use(listWindow(), fill, [](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        user.selectRow("vsf1", 1);
        user.alsoSelectRow("vsf1", 3);
        user.rightClickRow("vsf1", 1, "");
        EXPECT_EQ(selectedRows(grid), std::vector<int>{1});
        EXPECT_EQ(grid.currentRow(), 1);
        user.rightClickRow("vsf1", 4, "");
        EXPECT_EQ(selectedRows(grid), std::vector<int>{4});
    });
}

TEST_F(ToolkitContract, theEnterKeyReachesTheGrid) {
    std::vector<int> keys;
    use(
        listWindow(),
        [&](Window& window) {
            fill(window);
            window.get<ListGrid>("vsf1").keyDown = [&](int key) { keys.push_back(key); };
        },
        [](User& user) {
            user.selectRow("vsf1", 2);
            user.keyOnGrid("vsf1", kKeyEnter);
            EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
        });
    EXPECT_EQ(keys, (std::vector<int>{kKeyEnter}));
}

TEST_F(ToolkitContract, theArrowKeysMoveTheCurrentRow) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        user.selectRow("vsf1", 2);
        user.press("Down");
        EXPECT_EQ(grid.currentRow(), 3);
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{3}));
        user.press("Up");
        user.press("Up");
        user.press("Up");
        EXPECT_EQ(grid.currentRow(), 1);
    });
}

TEST_F(ToolkitContract, aFailureOfADoubleClickIsShownAndTheGridWorksOn) {
    use(
        listWindow(),
        [](Window& window) {
            fill(window);
            window.get<ListGrid>("vsf1").doubleClick = [] { throw std::runtime_error("溢出"); };
        },
        [](User& user) {
            user.answer(MessageKind::critical, "溢出");
            user.doubleClickRow("vsf1", 1);
            user.selectRow("vsf1", 2);
            EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
        });
}

TEST_F(ToolkitContract, bothMouseButtonsRaiseMouseDown) {
    std::vector<MouseButton> buttons;
    use(
        listWindow(),
        [&](Window& window) {
            fill(window);
            window.get<ListGrid>("vsf1").mouseDown = [&](MouseButton button) { buttons.push_back(button); };
        },
        [](User& user) {
            user.selectRow("vsf1", 2);
            user.rightClick("vsf1", "");
        });
    EXPECT_EQ(buttons, (std::vector<MouseButton>{MouseButton::left, MouseButton::right}));
}

}  // namespace
}  // namespace orvenmod::test
