// What the keys do in a list and in a tree.
#include <vector>

#include "platform/contract/listgrid.h"

namespace orvenmod::test {
namespace {

using namespace platform;

void fill(Window& window) {
    for (const char* row : {"\t1\tA", "\t2\tB", "\t3\tC", "\t4\tD", "\t5\tD"})
        window.get<ListGrid>("vsf1").addRow(row);
    window.get<ListGrid>("vsf1").setColumnHidden(0, true);
    window.get<ListGrid>("vsf1").setColumnHidden(1, true);
    window.get<ListGrid>("vsf1").setCurrentRow(2);
}

std::vector<int> selectedRows(const ListGrid& grid) {
    std::vector<int> rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        if (grid.isSelected(row)) rows.push_back(row);
    }
    return rows;
}

TEST_F(ToolkitContract, keysLeadToTheEndsOfAListAndPageThroughIt) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        const std::vector<std::pair<const char*, int>> ways = {{"End", 5}, {"Home", 1}, {"PageDown", 5}, {"PageUp", 1}};
        for (const auto& [key, row] : ways) {
            user.press(key);
            EXPECT_EQ(grid.currentRow(), row) << key;
            EXPECT_EQ(selectedRows(grid), std::vector<int>{row}) << key;
        }
    });
}

TEST_F(ToolkitContract, ctrlMovesTheCurrentRowAndLeavesTheSelection) {
    use(listWindow(), fill, [](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        for (const auto& [key, row] : {std::pair{"Ctrl+End", 5}, {"Ctrl+Up", 4}, {"Ctrl+Home", 1}, {"Ctrl+Down", 2}}) {
            user.press(key);
            EXPECT_EQ(grid.currentRow(), row) << key;
            EXPECT_EQ(selectedRows(grid), std::vector<int>{2}) << key;
        }
    });
}

TEST_F(ToolkitContract, aPageIsAsLongAsTheListShowsRows) {
    use(
        listWindow(),
        [](Window& window) {
            for (int row = 1; row <= 200; ++row)
                window.get<ListGrid>("vsf1").addRow("\t" + std::to_string(row) + "\tA");
            window.get<ListGrid>("vsf1").setCurrentRow(1);
        },
        [](User& user) {
            const auto& grid = user.control<ListGrid>("vsf1");
            user.press("PageDown");
            EXPECT_NEAR(grid.currentRow(), 12, 2) << "about as many rows as 333 pixels show";
            user.press("PageUp");
            EXPECT_EQ(grid.currentRow(), 1);
        });
}

TEST_F(ToolkitContract, theBlankKeySelectsTheCurrentRowAgain) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        user.alsoSelectRow("vsf1", 2);
        EXPECT_TRUE(selectedRows(grid).empty());
        user.press("Space");
        EXPECT_EQ(selectedRows(grid), std::vector<int>{2});
        EXPECT_EQ(grid.currentRow(), 2);
    });
}

TEST_F(ToolkitContract, ctrlAInAListWithoutSuchAMenuSelectsAllRows) {
    use(listWindow(), fill, [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        user.press("Ctrl+A");
        EXPECT_EQ(selectedRows(grid), (std::vector<int>{1, 2, 3, 4, 5}));
        EXPECT_EQ(grid.currentRow(), 2);
    });
}

TEST_F(ToolkitContract, deleteAndEscapeDoNothingToAList) {
    use(listWindow(), fill, [](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        for (const char* key : {"Delete", "Esc", "Backspace", "Insert", "F2"})
            user.press(key);
        EXPECT_TRUE(user.window().shown());
        EXPECT_EQ(grid.rowCount(), 6);
        EXPECT_EQ(grid.currentRow(), 2);
        EXPECT_EQ(selectedRows(grid), std::vector<int>{2});
    });
}

TEST_F(ToolkitContract, aLetterLeadsToTheNextRowThatStartsWithIt) {
    use(listWindow(), fill, [](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        user.typeKeys("d");
        EXPECT_EQ(grid.currentRow(), 4);
        EXPECT_EQ(selectedRows(grid), std::vector<int>{4});
    });
}

TEST_F(ToolkitContract, aListThatTakesLettersHandsThemOver) {
    std::string letters;
    use(
        listWindow(),
        [&](Window& window) {
            fill(window);
            window.get<ListGrid>("vsf1").typed = [&](const std::string& text) { letters += text; };
        },
        [&](User& user) {
            user.typeKeys("d1");
            user.press("Space");
            EXPECT_EQ(letters, "d1") << "a blank is no letter";
            EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
        });
}

TEST_F(ToolkitContract, keysThatWriteNothingAreNotHandedOver) {
    std::string letters;
    use(
        listWindow(),
        [&](Window& window) {
            fill(window);
            window.get<ListGrid>("vsf1").typed = [&](const std::string& text) { letters += text; };
        },
        [&](User& user) {
            for (const char* key : {"Esc", "Delete", "Backspace", "Insert", "F2", "Left", "Right"})
                user.press(key);
            EXPECT_EQ(letters, "");
            EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
        });
}

TEST_F(ToolkitContract, keysLeadToTheEndsOfATreeAndOpenAndCloseItsNodes) {
    std::vector<std::string> keys;
    use(
        windowWith({drawn(ControlKind::tree, "tv1", 0, 5000)}),
        [&](Window& window) {
            auto& tree = window.get<Tree>("tv1");
            tree.add("", "D0", "物料", "");
            tree.add("D0", "D7", "螺丝", "");
            tree.add("D7", "D9", "不锈钢", "");
            tree.add("D0", "D3", "螺母", "");
            tree.ensureVisible("D3");
            tree.nodeClick = [&](const std::string& key) { keys.push_back(key); };
        },
        [](User& user) {
            const auto& tree = user.control<Tree>("tv1");
            user.clickNode("tv1", "D7");
            user.press("Right");
            EXPECT_TRUE(tree.expanded("D7"));
            user.press("Right");
            user.press("Left");
            user.press("Left");
            EXPECT_FALSE(tree.expanded("D7"));
            user.press("Left");
            user.press("End");
            user.press("Home");
        });
    EXPECT_EQ(keys, (std::vector<std::string>{"D7", "D9", "D7", "D0", "D3", "D0"}));
}

TEST_F(ToolkitContract, aLetterLeadsToTheNextNodeThatStartsWithIt) {
    std::vector<std::string> keys;
    use(
        windowWith({drawn(ControlKind::tree, "tv1", 0, 5000)}),
        [&](Window& window) {
            auto& tree = window.get<Tree>("tv1");
            tree.add("", "D0", "goods", "");
            tree.add("D0", "D7", "screws", "");
            tree.add("D7", "D9", "steel", "");
            tree.add("D0", "D3", "nuts", "");
            tree.ensureVisible("D3");
            tree.nodeClick = [&](const std::string& key) { keys.push_back(key); };
        },
        [](User& user) {
            user.clickNode("tv1", "D0");
            user.typeKeys("n");
        });
    EXPECT_EQ(keys, (std::vector<std::string>{"D0", "D3"}));
}

}  // namespace
}  // namespace orvenmod::test
