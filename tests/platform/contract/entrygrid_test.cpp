#include <stdexcept>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign fieldWindow() {
    ControlDesign grid = drawn(ControlKind::entryGrid, "fps1", 0, 5000);
    grid.width = 8000;
    grid.columns = {{.title = "项目", .width = 1500, .locked = true},
                    {.title = "值", .width = 2500},
                    {.title = "内部ID", .width = 900, .hidden = true}};
    return windowWith({grid});
}

void threeRows(Window& window) { window.get<EntryGrid>("fps1").setRowCount(3); }

TEST_F(ToolkitContract, anEntryGridStartsEmptyAndTakesRows) {
    use(fieldWindow(), [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_EQ(grid.rowCount(), 0);
        EXPECT_EQ(grid.columnCount(), 3);
        EXPECT_EQ(grid.activeRow(), 0);
        grid.setRowCount(2);
        grid.setText(2, 2, "A01");
        grid.setRowCount(3);
        EXPECT_EQ(grid.rowCount(), 3);
        EXPECT_EQ(grid.text(2, 2), "A01");
        EXPECT_EQ(grid.text(2, 3), "");
        grid.setRowCount(1);
        grid.setRowCount(2);
        EXPECT_EQ(grid.text(2, 2), "");
        EXPECT_THROW(grid.text(2, 3), std::out_of_range);
        EXPECT_THROW(grid.text(4, 1), std::out_of_range);
        EXPECT_THROW(grid.setText(2, 3, "x"), std::out_of_range);
    });
}

TEST_F(ToolkitContract, cellsCarryTagsThatNobodySees) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setCellTag(1, 2, "4711");
        EXPECT_EQ(grid.cellTag(1, 2), "4711");
        EXPECT_EQ(grid.cellTag(1, 1), "");
        EXPECT_EQ(grid.text(1, 2), "");
    });
}

TEST_F(ToolkitContract, aTypeIsSetForACellOrAWholeColumn) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_EQ(grid.cellType(2, 1), CellType::text);
        grid.setCellType(2, 1, CellType::date);
        EXPECT_EQ(grid.cellType(2, 1), CellType::date);
        EXPECT_EQ(grid.cellType(2, 2), CellType::text);
        grid.setCellType(2, 0, CellType::number);
        EXPECT_EQ(grid.cellType(2, 1), CellType::number);
        grid.setRowCount(4);
        EXPECT_EQ(grid.cellType(2, 4), CellType::number);
        grid.setCellType(2, 3, CellType::combo);
        EXPECT_EQ(grid.cellType(2, 3), CellType::combo);
    });
}

TEST_F(ToolkitContract, aLockIsSetForACellOrAWholeColumn) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_TRUE(grid.locked(1, 1));
        EXPECT_FALSE(grid.locked(2, 1));
        grid.setLocked(2, 1, true);
        EXPECT_TRUE(grid.locked(2, 1));
        EXPECT_FALSE(grid.locked(2, 2));
        grid.setLocked(2, 0, true);
        EXPECT_TRUE(grid.locked(2, 2));
        grid.setRowCount(4);
        EXPECT_TRUE(grid.locked(2, 4));
        grid.setLocked(2, 4, false);
        EXPECT_FALSE(grid.locked(2, 4));
        grid.setLockedColour({244, 244, 217});
        grid.setText(2, 1, "code writes all the same");
        EXPECT_EQ(grid.text(2, 1), "code writes all the same");
    });
}

TEST_F(ToolkitContract, aCellIsMarkedAsRequiredBesideItsText) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setText(1, 2, "名称");
        grid.setRequired(1, 2, true);
        EXPECT_TRUE(grid.required(1, 2));
        EXPECT_FALSE(grid.required(1, 1));
        EXPECT_EQ(grid.text(1, 2), "名称");
        grid.deleteRow(1);
        EXPECT_TRUE(grid.required(1, 1));
        grid.setRequired(1, 1, false);
        EXPECT_FALSE(grid.required(1, 1));
    });
}

TEST_F(ToolkitContract, columnsAreHiddenAndShown) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_TRUE(grid.columnHidden(3));
        grid.setColumnHidden(3, false);
        EXPECT_FALSE(grid.columnHidden(3));
        grid.setColumnHidden(2, true);
        EXPECT_TRUE(grid.columnHidden(2));
        grid.setText(2, 1, "kept");
        EXPECT_EQ(grid.text(2, 1), "kept");
    });
}

TEST_F(ToolkitContract, writingAComboSelectsTheEntryOfThatText) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setCellType(2, 1, CellType::combo);
        grid.setItems(2, 1, {"无", "    五金(01)", "    五金(02)"});
        EXPECT_EQ(grid.selectedItem(2, 1), -1);
        grid.setText(2, 1, "    五金(02)");
        EXPECT_EQ(grid.selectedItem(2, 1), 2);
        grid.setText(2, 1, "不在其中");
        EXPECT_EQ(grid.selectedItem(2, 1), -1);
        EXPECT_EQ(grid.text(2, 1), "不在其中");
        grid.selectItem(2, 1, 1);
        EXPECT_EQ(grid.text(2, 1), "    五金(01)");
        grid.selectItem(2, 1, -1);
        EXPECT_EQ(grid.selectedItem(2, 1), -1);
        EXPECT_EQ(grid.text(2, 1), "");
        EXPECT_THROW(grid.selectItem(2, 1, 3), std::out_of_range);
    });
}

TEST_F(ToolkitContract, entriesOfTheSameTextAreToldApartByTheirPlace) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setCellType(2, 1, CellType::combo);
        grid.setItems(2, 1, {"螺丝", "螺丝"});
        grid.selectItem(2, 1, 1);
        EXPECT_EQ(grid.selectedItem(2, 1), 1);
        grid.setText(2, 1, "螺丝");
        EXPECT_EQ(grid.selectedItem(2, 1), 0);
    });
}

TEST_F(ToolkitContract, hiddenColumnsHoldCombosToo) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setCellType(3, 1, CellType::combo);
        grid.setItems(3, 1, {"0", "12", "15"});
        grid.setText(3, 1, "15");
        EXPECT_EQ(grid.selectedItem(3, 1), 2);
        grid.selectItem(3, 1, 1);
        EXPECT_EQ(grid.text(3, 1), "12");
    });
}

TEST_F(ToolkitContract, aCheckBoxTakesOneZeroOrNothing) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setCellType(2, 0, CellType::checkBox);
        for (const char* text : {"1", "0", ""}) {
            grid.setText(2, 1, text);
            EXPECT_EQ(grid.text(2, 1), text);
        }
        EXPECT_THROW(grid.setText(2, 1, "yes"), std::invalid_argument);
        EXPECT_EQ(grid.text(2, 1), "");
    });
}

TEST_F(ToolkitContract, writingByCodeRaisesNothing) {
    int events = 0;
    use(fieldWindow(), threeRows, [&](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.editChange = [&](int, int) { ++events; };
        grid.comboSelectionChange = [&](int, int) { ++events; };
        grid.comboCloseUp = [&](int, int, int) { ++events; };
        grid.setCellType(2, 1, CellType::combo);
        grid.setItems(2, 1, {"甲", "乙"});
        grid.selectItem(2, 1, 1);
        grid.setText(2, 1, "甲");
        grid.setText(2, 2, "文");
        EXPECT_EQ(events, 0);
    });
}

TEST_F(ToolkitContract, aDeletedRowMovesTheOthersUpWithAllTheyCarry) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setText(2, 2, "乙");
        grid.setCellTag(1, 2, "2");
        grid.setLocked(2, 3, true);
        grid.deleteRow(1);
        EXPECT_EQ(grid.rowCount(), 2);
        EXPECT_EQ(grid.text(2, 1), "乙");
        EXPECT_EQ(grid.cellTag(1, 1), "2");
        EXPECT_TRUE(grid.locked(2, 2));
        EXPECT_THROW(grid.deleteRow(3), std::out_of_range);
        EXPECT_THROW(grid.deleteRow(0), std::out_of_range);
    });
}

TEST_F(ToolkitContract, theActiveCellIsSetAndFollowsADeletion) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setActiveCell(2, 3);
        EXPECT_EQ(grid.activeColumn(), 2);
        EXPECT_EQ(grid.activeRow(), 3);
        grid.deleteRow(1);
        EXPECT_EQ(grid.activeRow(), 2);
        grid.deleteRow(2);
        EXPECT_EQ(grid.activeRow(), 1);
        grid.deleteRow(1);
        EXPECT_EQ(grid.activeRow(), 0);
        EXPECT_THROW(grid.setActiveCell(2, 1), std::out_of_range);
    });
}

TEST_F(ToolkitContract, cuttingAwayTheActiveRowLeavesNone) {
    use(fieldWindow(), threeRows, [](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setActiveCell(2, 3);
        grid.setRowCount(2);
        EXPECT_EQ(grid.activeRow(), 0);
    });
}

}  // namespace
}  // namespace orvenmod::test
