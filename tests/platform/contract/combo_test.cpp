#include <stdexcept>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign comboWindow() { return windowWith({drawn(ControlKind::combo, "PC")}); }

void fill(Window& window) {
    auto& combo = window.get<Combo>("PC");
    combo.addRow({"无", "", ""});
    combo.addRow({"名称", "fName", "2"});
    combo.addRow({"数量"});
}

TEST_F(ToolkitContract, aComboHoldsRowsOfSeveralColumns) {
    use(comboWindow(), fill, [](User& user) {
        auto& combo = user.control<Combo>("PC");
        EXPECT_EQ(combo.rowCount(), 3);
        EXPECT_EQ(combo.cell(1, 0), "名称");
        EXPECT_EQ(combo.cell(1, 2), "2");
        EXPECT_EQ(combo.cell(2, 1), "");
        EXPECT_THROW(combo.cell(3, 0), std::out_of_range);
        EXPECT_THROW(combo.cell(-1, 0), std::out_of_range);
    });
}

TEST_F(ToolkitContract, nothingIsSelectedUntilCodeOrUserDoes) {
    use(comboWindow(), fill, [](User& user) { EXPECT_EQ(user.control<Combo>("PC").selected(), -1); });
}

TEST_F(ToolkitContract, selectingARowRaisesTheEventAlsoForTheSameRow) {
    int changes = 0;
    use(
        comboWindow(),
        [&](Window& window) {
            window.get<Combo>("PC").selectionChange = [&] { ++changes; };
            fill(window);
            EXPECT_EQ(changes, 0);
        },
        [&](User& user) {
            auto& combo = user.control<Combo>("PC");
            combo.select(1);
            combo.select(1);
            EXPECT_EQ(changes, 2);
            combo.select(-1);
            EXPECT_EQ(combo.selected(), -1);
            EXPECT_EQ(changes, 3);
        });
}

TEST_F(ToolkitContract, selectingARowBeyondTheLastThrowsAndLeavesTheSelection) {
    int changes = 0;
    use(comboWindow(), fill, [&](User& user) {
        auto& combo = user.control<Combo>("PC");
        combo.select(1);
        combo.selectionChange = [&] { ++changes; };
        EXPECT_THROW(combo.select(3), std::out_of_range);
        EXPECT_THROW(combo.select(-2), std::out_of_range);
        EXPECT_EQ(combo.selected(), 1);
        EXPECT_EQ(changes, 0);
    });
}

TEST_F(ToolkitContract, theEventOfASelectionSeesTheNewRow) {
    int seen = -2;
    use(comboWindow(), fill, [&](User& user) {
        auto& combo = user.control<Combo>("PC");
        combo.selectionChange = [&] { seen = combo.selected(); };
        combo.select(2);
        EXPECT_EQ(seen, 2);
        user.pick("PC", 0);
        EXPECT_EQ(seen, 0);
    });
}

TEST_F(ToolkitContract, clearingAComboLeavesNoRowsAndNoSelection) {
    int changes = 0;
    use(comboWindow(), fill, [&](User& user) {
        auto& combo = user.control<Combo>("PC");
        combo.select(1);
        combo.selectionChange = [&] { ++changes; };
        combo.clear();
        EXPECT_EQ(combo.rowCount(), 0);
        EXPECT_EQ(combo.selected(), -1);
        EXPECT_EQ(changes, 0);
        EXPECT_THROW(combo.select(0), std::out_of_range);
    });
}

TEST_F(ToolkitContract, theNumberOfListRowsIsKept) {
    use(comboWindow(), fill, [](User& user) {
        auto& combo = user.control<Combo>("PC");
        combo.setListRows(23);
        EXPECT_EQ(combo.listRows(), 23);
        combo.setListRows(0);
        EXPECT_EQ(combo.listRows(), 0);
    });
}

TEST_F(ToolkitContract, theUserPicksARow) {
    int changes = 0;
    use(
        comboWindow(),
        [&](Window& window) {
            fill(window);
            window.get<Combo>("PC").select(0);
            window.get<Combo>("PC").selectionChange = [&] { ++changes; };
        },
        [&](User& user) {
            user.pick("PC", 2);
            EXPECT_EQ(user.control<Combo>("PC").selected(), 2);
            EXPECT_EQ(changes, 1);
        });
}

TEST_F(ToolkitContract, aFailureAfterAPickIsShownAndTheSelectionStands) {
    use(
        comboWindow(),
        [](Window& window) {
            fill(window);
            window.get<Combo>("PC").selectionChange = [] { throw std::runtime_error("列名无效"); };
        },
        [](User& user) {
            user.answer(MessageKind::critical, "列名无效");
            user.pick("PC", 1);
            EXPECT_EQ(user.control<Combo>("PC").selected(), 1);
        });
}

}  // namespace
}  // namespace orvenmod::test
