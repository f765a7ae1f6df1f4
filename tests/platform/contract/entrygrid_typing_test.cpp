// What the user does to an entry grid.
#include <stdexcept>
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign cellWindow() {
    ControlDesign grid = drawn(ControlKind::entryGrid, "fps1", 0, 5000);
    grid.width = 8000;
    grid.columns = {{.title = "项目", .width = 1500, .locked = true}, {.title = "值", .width = 2500}};
    return windowWith({grid});
}

/// Four rows whose second column is of that type.
std::function<void(Window&)> cellsOf(CellType type) {
    return [type](Window& window) {
        auto& grid = window.get<EntryGrid>("fps1");
        grid.setRowCount(4);
        grid.setCellType(2, 0, type);
    };
}

TEST_F(ToolkitContract, typingIntoACellRaisesEditChangeForEveryLetter) {
    std::vector<std::string> texts;
    use(cellWindow(), cellsOf(CellType::text), [&](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setText(2, 1, "old");
        grid.editChange = [&](int column, int row) {
            texts.push_back(std::to_string(column) + "," + std::to_string(row) + " " + grid.text(column, row));
        };
        user.typeCell("fps1", 2, 1, "螺A1");
        EXPECT_EQ(grid.text(2, 1), "螺A1");
        EXPECT_EQ(texts, (std::vector<std::string>{"2,1 螺", "2,1 螺A", "2,1 螺A1"}));
    });
}

TEST_F(ToolkitContract, typingNothingEmptiesTheCell) {
    use(cellWindow(), cellsOf(CellType::text), [](User& user) {
        user.control<EntryGrid>("fps1").setText(2, 1, "old");
        user.typeCell("fps1", 2, 1, "");
        EXPECT_EQ(user.control<EntryGrid>("fps1").text(2, 1), "");
    });
}

TEST_F(ToolkitContract, aHandlerMayWriteOtherCellsWhileTheUserTypes) {
    use(cellWindow(), cellsOf(CellType::text), [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.editChange = [&](int, int row) {
            if (row == 1) grid.setText(2, 2, "01." + grid.text(2, 1));
        };
        user.typeCell("fps1", 2, 1, "007");
        EXPECT_EQ(grid.text(2, 2), "01.007");
        EXPECT_EQ(grid.text(2, 1), "007");
    });
}

TEST_F(ToolkitContract, aPickRaisesSelectionChangeThenCloseUp) {
    std::vector<std::string> story;
    use(cellWindow(), cellsOf(CellType::combo), [&](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setItems(2, 3, {"无", "甲", "乙"});
        grid.comboSelectionChange = [&](int column, int row) {
            story.push_back("change " + std::to_string(column) + "," + std::to_string(row) + " " +
                            std::to_string(grid.selectedItem(column, row)));
        };
        grid.comboCloseUp = [&](int column, int row, int item) {
            story.push_back("close " + std::to_string(column) + "," + std::to_string(row) + " " + std::to_string(item));
        };
        user.pickCell("fps1", 2, 3, 2);
        EXPECT_EQ(grid.text(2, 3), "乙");
    });
    EXPECT_EQ(story, (std::vector<std::string>{"change 2,3 2", "close 2,3 2"}));
}

TEST_F(ToolkitContract, aFailureAfterAPickOfACellIsShownAndThePickStands) {
    use(cellWindow(), cellsOf(CellType::combo), [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setItems(2, 1, {"无", "甲"});
        grid.comboCloseUp = [](int, int, int) { throw std::runtime_error("类型不匹配"); };
        user.answer(MessageKind::critical, "类型不匹配");
        user.pickCell("fps1", 2, 1, 1);
        EXPECT_EQ(grid.selectedItem(2, 1), 1);
    });
}

TEST_F(ToolkitContract, aClickTogglesACheckBox) {
    use(cellWindow(), cellsOf(CellType::checkBox), [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        user.clickCell("fps1", 2, 1);
        EXPECT_EQ(grid.text(2, 1), "1");
        user.clickCell("fps1", 2, 1);
        EXPECT_EQ(grid.text(2, 1), "0");
    });
}

TEST_F(ToolkitContract, aButtonCellRaisesItsPlace) {
    std::vector<std::pair<int, int>> clicks;
    use(cellWindow(), cellsOf(CellType::button), [&](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setText(2, 1, "删除");
        grid.buttonClick = [&](int column, int row) { clicks.emplace_back(column, row); };
        user.clickCell("fps1", 2, 4);
        user.clickCell("fps1", 2, 1);
    });
    EXPECT_EQ(clicks, (std::vector<std::pair<int, int>>{{2, 4}, {2, 1}}));
}

TEST_F(ToolkitContract, aButtonMayDeleteItsOwnRow) {
    use(cellWindow(), cellsOf(CellType::button), [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.buttonClick = [&](int, int row) { grid.deleteRow(row); };
        user.clickCell("fps1", 2, 4);
        EXPECT_EQ(grid.rowCount(), 3);
        user.clickCell("fps1", 2, 1);
        EXPECT_EQ(grid.rowCount(), 2);
    });
}

TEST_F(ToolkitContract, enterWalksTheCellsThatTakeAValueAndTellsWhenItLeavesTheLast) {
    int left = 0;
    use(cellWindow(), cellsOf(CellType::text), [&](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        const int last = grid.rowCount();
        grid.setLocked(2, last, true);
        grid.setLocked(1, 0, true);
        grid.leftByEnter = [&] { ++left; };
        grid.setFocus();
        grid.setActiveCell(2, 1);
        for (int row = 2; row < last; ++row) {
            user.press("Enter");
            EXPECT_EQ(grid.activeRow(), row);
            EXPECT_EQ(grid.activeColumn(), 2);
        }
        EXPECT_EQ(left, 0);
        user.typeKeys("7");
        user.press("Enter");
        EXPECT_EQ(left, 1);
        EXPECT_EQ(grid.text(2, last - 1), "7");
        EXPECT_EQ(grid.activeRow(), last - 1) << "a locked cell takes no value";
    });
}

TEST_F(ToolkitContract, leavingTheLastCellByEnterMayMoveTheKeyboardAway) {
    ControlDesign list = drawn(ControlKind::listGrid, "vsf1", 5200, 700);
    list.columns = {{.title = "代码"}};
    WindowDesign design = cellWindow();
    design.controls.push_back(list);
    use(design, cellsOf(CellType::text), [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.leftByEnter = [&user] { user.control<ListGrid>("vsf1").setFocus(); };
        grid.setFocus();
        grid.setActiveCell(2, grid.rowCount());
        user.typeKeys("7");
        user.press("Enter");
        EXPECT_TRUE(user.control<ListGrid>("vsf1").hasFocus());
        EXPECT_EQ(grid.text(2, grid.rowCount()), "7");
    });
}

TEST_F(ToolkitContract, aClickMakesACellActive) {
    use(cellWindow(), cellsOf(CellType::text), [](User& user) {
        user.clickCell("fps1", 2, 3);
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeRow(), 3);
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeColumn(), 2);
        user.clickCell("fps1", 1, 2);
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeRow(), 2);
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeColumn(), 1);
    });
}

}  // namespace
}  // namespace orvenmod::test
