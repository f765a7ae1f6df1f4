// The keys that belong to an open cell and to its list.
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

class FieldKeys : public ToolkitContract {
protected:
    static constexpr int kText = 1, kChoice = 2, kNumber = 3;

    /// A grid of one column, with a list below it; the keyboard stands in the row.
    void inRow(int row, const std::function<void(User&, EntryGrid&)>& steps) {
        ControlDesign cells = drawn(ControlKind::entryGrid, "fps1", 0, 3500);
        cells.width = 8000;
        cells.columns = {{.title = "值", .width = 2500}, {.title = "备注", .width = 2500}};
        ControlDesign list = drawn(ControlKind::listGrid, "vsf1", 4000, 1500);
        list.columns = {{.title = "代码"}};
        use(windowWith({cells, list}), load, [&](User& user) {
            user.clickCell("fps1", 1, row);
            steps(user, user.control<EntryGrid>("fps1"));
        });
    }

private:
    static void load(Window& window) {
        auto& grid = window.get<EntryGrid>("fps1");
        grid.setRowCount(kNumber);
        grid.setText(1, kText, "旧");
        grid.setCellType(1, kChoice, CellType::combo);
        grid.setItems(1, kChoice, {"无", "甲乙", "乙丙", "丁"});
        grid.setCellType(1, kNumber, CellType::number);
        grid.setNumberRule(1, kNumber, {.decimals = 0, .minimum = 10});
        window.get<ListGrid>("vsf1").addRow("01");
        window.get<ListGrid>("vsf1").addRow("02");
    }
};

TEST_F(FieldKeys, correctWhatWasTypedWithoutLeavingTheCell) {
    inRow(kText, [](User& user, EntryGrid& grid) {
        user.typeKeys("甲乙丙");
        user.press("Backspace");
        EXPECT_EQ(grid.openText(), "甲乙");
        for (const char* key : {"Left", "Right", "Home", "End", "Delete"}) {
            user.press(key);
            EXPECT_TRUE(grid.cellOpen()) << key;
            EXPECT_EQ(grid.openText(), "甲乙") << key;
        }
        user.press("Space");
        user.typeKeys("丁");
        EXPECT_EQ(grid.openText(), "甲乙 丁");
        user.press("Ctrl+A");
        user.press("Ctrl+C");
        EXPECT_EQ(user.copied(), "甲乙 丁");
        user.typeKeys("新");
        EXPECT_EQ(grid.openText(), "新");
        user.press("Ctrl+A");
        user.press("Ctrl+X");
        EXPECT_EQ(user.copied(), "新");
        EXPECT_EQ(grid.openText(), "");
        user.press("Enter");
        EXPECT_EQ(grid.text(1, kText), "");
    });
}

TEST_F(FieldKeys, backspaceTakesTheRefusalBackToo) {
    inRow(kNumber, [](User& user, EntryGrid& grid) {
        user.typeKeys("2.");
        user.typeKeys("5");
        user.press("Enter");
        EXPECT_NE(grid.refusal(), "");
        user.press("Backspace");
        EXPECT_EQ(grid.refusal(), "");
        user.press("Backspace");
        user.typeKeys("5");
        user.press("Tab");
        EXPECT_EQ(grid.text(1, kNumber), "25");
    });
}

TEST_F(FieldKeys, f2OpensTheCellWithWhatStandsInIt) {
    inRow(kText, [](User& user, EntryGrid& grid) {
        user.press("F2");
        EXPECT_TRUE(grid.cellOpen());
        EXPECT_EQ(grid.openText(), "旧");
        user.press("End");
        user.typeKeys("名");
        EXPECT_EQ(grid.openText(), "旧名");
    });
}

TEST_F(FieldKeys, leftAndRightWalkTheCellsThatAreNotOpen) {
    inRow(kText, [](User& user, EntryGrid& grid) {
        user.press("Right");
        EXPECT_EQ(grid.activeColumn(), 2);
        user.press("Right");
        EXPECT_EQ(grid.activeColumn(), 2);
        user.press("Left");
        user.press("Left");
        EXPECT_EQ(grid.activeColumn(), 1);
        EXPECT_EQ(grid.activeRow(), kText);
    });
}

TEST_F(FieldKeys, typingIntoAChoiceListsTheEntriesThatFit) {
    inRow(kChoice, [](User& user, EntryGrid& grid) {
        user.typeKeys("乙");
        EXPECT_EQ(user.openedList(), (std::vector<std::string>{"甲乙", "乙丙"}));
        user.press("Down");
        user.press("Down");
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(1, kChoice), 2);
        user.clickCell("fps1", 1, kChoice);
        user.typeKeys("戊");
        EXPECT_EQ(user.openedList(), std::vector<std::string>{});
        user.press("Tab");
        EXPECT_EQ(grid.refusal(), "没有这一项");
        user.press("F4");
        EXPECT_EQ(user.openedList(), (std::vector<std::string>{"无", "甲乙", "乙丙", "丁"}));
    });
}

TEST_F(FieldKeys, theMarkInAListStaysWithinItsEntries) {
    inRow(kChoice, [](User& user, EntryGrid& grid) {
        user.typeKeys("乙");
        for (int step = 0; step < 3; ++step)
            user.press("Down");
        EXPECT_EQ(grid.openText(), "乙丙");
        user.press("Tab");
        EXPECT_EQ(grid.selectedItem(1, kChoice), 2);
        user.clickCell("fps1", 1, kChoice);
        user.press("F4");
        for (int step = 0; step < 4; ++step)
            user.press("Up");
        EXPECT_EQ(grid.openText(), "无");
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(1, kChoice), 0);
    });
}

TEST_F(FieldKeys, reachTheFieldWhileItsListShows) {
    inRow(kChoice, [](User& user, EntryGrid& grid) {
        user.typeKeys("甲");
        user.paste("x");
        EXPECT_EQ(grid.openText(), "甲x");
        user.press("Backspace");
        user.press("Backspace");
        EXPECT_EQ(grid.openText(), "");
        EXPECT_EQ(user.openedList().size(), 4U);
        user.typeKeys("乙");
        user.press("Ctrl+A");
        user.typeKeys("丁");
        EXPECT_EQ(grid.openText(), "丁");
        EXPECT_EQ(user.openedList(), std::vector<std::string>{"丁"});
        user.press("Ctrl+A");
        user.press("Ctrl+X");
        EXPECT_EQ(user.copied(), "丁");
        user.paste("乙丙");
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(1, kChoice), 2);
    });
}

TEST_F(FieldKeys, f4ListsAllEntriesAndThenThoseThatAreTyped) {
    inRow(kChoice, [](User& user, EntryGrid& grid) {
        user.pickCell("fps1", 1, kChoice, 1);
        user.press("F4");
        EXPECT_EQ(user.openedList().size(), 4U);
        user.typeKeys("乙");
        EXPECT_EQ(grid.openText(), "乙") << "the text it held was marked";
        EXPECT_EQ(user.openedList(), (std::vector<std::string>{"甲乙", "乙丙"}));
        user.press("Up");
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(1, kChoice), 2);
    });
}

TEST_F(FieldKeys, aWindowThatClosesHasTakenOverItsOpenCell) {
    std::string seen;
    inRow(kNumber, [&](User& user, EntryGrid& grid) {
        user.window().unload = [&] { seen = grid.text(1, kNumber); };
        user.typeKeys("１７.");
        user.closeWindow();
    });
    EXPECT_EQ(seen, "17");
}

TEST_F(FieldKeys, aRightClickElsewhereDoesNothingWhileTheCellRefuses) {
    inRow(kNumber, [](User& user, EntryGrid& grid) {
        auto& list = user.control<ListGrid>("vsf1");
        list.setCurrentRow(1);
        int presses = 0;
        list.mouseDown = [&](MouseButton) { ++presses; };
        user.typeKeys("5");
        user.rightClickRow("vsf1", 2, "");
        EXPECT_EQ(list.currentRow(), 1);
        EXPECT_EQ(presses, 0);
        EXPECT_TRUE(grid.hasFocus());
        EXPECT_EQ(grid.openText(), "5");
        user.press("Esc");
        user.rightClickRow("vsf1", 2, "");
        EXPECT_EQ(list.currentRow(), 2);
        EXPECT_EQ(presses, 1);
    });
}

}  // namespace
}  // namespace orvenmod::test
