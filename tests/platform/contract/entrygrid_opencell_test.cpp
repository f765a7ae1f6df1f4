// A cell that its user types into: what takes over what was typed, and what a refusal holds back.
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

constexpr const char* kLimits = "请输入 10 到 100 之间的数";

/// Two grids' worth of leaving: the grid on the first of two tabs, and a control, a button, a tool and a menu.
WindowDesign officeWindow() {
    ControlDesign tabs = drawn(ControlKind::tabs, "SSTab1", 0, 4000);
    tabs.width = 8500;
    tabs.pages = {"基本信息", "附件"};
    ControlDesign grid = drawn(ControlKind::entryGrid, "fps1", 400, 3500);
    grid.parent = "SSTab1";
    grid.width = 8000;
    grid.columns = {{.title = "项目", .width = 1500, .locked = true}, {.title = "值", .width = 2500}};
    ControlDesign list = drawn(ControlKind::listGrid, "vsf1", 4100, 900);
    list.columns = {{.title = "代码"}};
    ControlDesign button = drawn(ControlKind::button, "cmdAdd", 5100);
    button.caption = "添加(&A)";
    WindowDesign design = windowWith({tabs, grid, list, drawn(ControlKind::edit, "txt", 5600), button});
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuFileSave", .caption = "保存", .parent = "MenuFile", .shortcut = "Ctrl+S"}};
    design.toolbar = "Toolbar1";
    design.toolButtons = {{.key = "Save", .caption = "保存", .icon = "save"}};
    return design;
}

class OpenCell : public ToolkitContract {
protected:
    /// Rows: 1 text, 2 number from 10 to 100, 3 day, 4 choice, 5 text; `commands` counts what the user set off.
    void inOffice(const std::function<void(User&, EntryGrid&)>& steps) {
        toolkit.setClock([] { return Date{2026, 11, 22}; });
        use(
            officeWindow(), [this](Window& window) { load(window); },
            [&](User& user) {
                auto& grid = user.control<EntryGrid>("fps1");
                user.clickCell("fps1", 2, kNumber);
                steps(user, grid);
            });
    }

    static constexpr int kText = 1, kNumber = 2, kDay = 3, kChoice = 4, kLast = 5;
    int commands = 0;
    std::vector<int> picks;

private:
    void load(Window& window) {
        auto& grid = window.get<EntryGrid>("fps1");
        grid.setRowCount(kLast);
        grid.setCellType(2, kNumber, CellType::number);
        grid.setNumberRule(2, kNumber, {.decimals = 2, .minimum = 10, .maximum = 100});
        grid.setText(2, kNumber, "50");
        grid.setCellType(2, kDay, CellType::date);
        grid.setCellType(2, kChoice, CellType::combo);
        grid.setItems(2, kChoice, {"无", "甲乙", "乙丙", "丁"});
        grid.comboCloseUp = [this](int, int, int item) { picks.push_back(item); };
        window.get<ListGrid>("vsf1").addRow("01");
        window.get<ListGrid>("vsf1").doubleClick = [this] { ++commands; };
        window.get<Button>("cmdAdd").click = [this] { ++commands; };
        window.get<Menu>("MenuFileSave").click = [this] { ++commands; };
        window.get<Toolbar>("Toolbar1").buttonClick = [this](const std::string&) { ++commands; };
    }
};

TEST_F(OpenCell, isOpenFromTheFirstLetterUntilEnter) {
    inOffice([](User& user, EntryGrid& grid) {
        EXPECT_FALSE(grid.cellOpen());
        EXPECT_EQ(grid.openText(), "");
        user.typeKeys("7");
        EXPECT_TRUE(grid.cellOpen());
        user.typeKeys("x");
        EXPECT_EQ(grid.openText(), "7x") << "no letter is swallowed";
        user.press("Esc");
        EXPECT_FALSE(grid.cellOpen());
        user.typeKeys("70");
        user.press("Enter");
        EXPECT_FALSE(grid.cellOpen());
        EXPECT_EQ(grid.text(2, kNumber), "70");
        EXPECT_EQ(grid.activeRow(), kDay);
    });
}

TEST_F(OpenCell, aRefusalHoldsEverythingBackAndEscapeFreesIt) {
    struct Way {
        const char* name;
        std::function<void(User&)> leave;
    };
    const Way ways[] = {{"Enter", [](User& user) { user.press("Enter"); }},
                        {"Tab", [](User& user) { user.press("Tab"); }},
                        {"Shift+Tab", [](User& user) { user.press("Shift+Tab"); }},
                        {"Up", [](User& user) { user.press("Up"); }},
                        {"Down", [](User& user) { user.press("Down"); }},
                        {"Ctrl+S", [](User& user) { user.press("Ctrl+S"); }},
                        {"Ctrl+PageDown", [](User& user) { user.press("Ctrl+PageDown"); }},
                        {"mnemonic", [](User& user) { user.press("Alt+A"); }},
                        {"menu", [](User& user) { user.chooseMenu("MenuFileSave"); }},
                        {"tool", [](User& user) { user.clickTool("Save"); }},
                        {"button", [](User& user) { user.click("cmdAdd"); }},
                        {"edit", [](User& user) { user.type("txt", ""); }},
                        {"list", [](User& user) { user.doubleClickRow("vsf1", 1); }},
                        {"cell", [](User& user) { user.clickCell("fps1", 2, kLast); }},
                        {"tab", [](User& user) { user.chooseTab("SSTab1", 1); }},
                        {"title bar", [](User& user) { user.closeWindow(); }}};
    for (const Way& way : ways) {
        SCOPED_TRACE(way.name);
        inOffice([&](User& user, EntryGrid& grid) {
            user.typeKeys("5");
            way.leave(user);
            ASSERT_TRUE(user.window().shown());
            EXPECT_TRUE(grid.cellOpen());
            EXPECT_EQ(grid.openText(), "5");
            EXPECT_EQ(grid.refusal(), kLimits);
            EXPECT_EQ(grid.activeRow(), kNumber);
            EXPECT_TRUE(grid.hasFocus());
            EXPECT_EQ(user.control<Tabs>("SSTab1").tab(), 0);
            EXPECT_EQ(commands, 0);
            user.press("Esc");
            EXPECT_EQ(grid.text(2, kNumber), "50");
            EXPECT_EQ(grid.refusal(), "");
            way.leave(user);
            EXPECT_FALSE(grid.cellOpen());
        });
        commands = 0;
    }
}

TEST_F(OpenCell, aRefusalIsTakenBackByTheNextLetter) {
    inOffice([](User& user, EntryGrid& grid) {
        user.typeKeys("5");
        user.press("Enter");
        EXPECT_EQ(grid.refusal(), kLimits);
        user.typeKeys("0");
        EXPECT_EQ(grid.refusal(), "");
        user.press("Enter");
        EXPECT_EQ(grid.text(2, kNumber), "50");
    });
}

TEST_F(OpenCell, aCommandFindsWhatWasTyped) {
    std::string seen;
    inOffice([&](User& user, EntryGrid& grid) {
        user.control<Menu>("MenuFileSave").click = [&] { seen = grid.text(2, kNumber); };
        user.typeKeys("1");
        user.typeKeys("7.");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(seen, "17");
}

TEST_F(OpenCell, escapePutsBackWhatStoodThereAndTells) {
    int changes = 0;
    inOffice([&](User& user, EntryGrid& grid) {
        grid.editChange = [&](int, int) { ++changes; };
        user.typeKeys("7");
        EXPECT_EQ(grid.text(2, kNumber), "7");
        user.press("Esc");
        EXPECT_EQ(grid.text(2, kNumber), "50");
    });
    EXPECT_EQ(changes, 2);
}

TEST_F(OpenCell, aPartOfANameThatFitsOneEntryTakesItHoweverTheCellIsLeft) {
    const std::vector<std::function<void(User&)>> ways = {[](User& user) { user.press("Enter"); },
                                                          [](User& user) { user.press("Tab"); },
                                                          [](User& user) { user.press("Ctrl+S"); },
                                                          [](User& user) { user.click("cmdAdd"); },
                                                          [](User& user) { user.clickCell("fps1", 2, kLast); },
                                                          [](User& user) { user.clickTool("Save"); }};
    for (const auto& leave : ways) {
        inOffice([&](User& user, EntryGrid& grid) {
            user.clickCell("fps1", 2, kChoice);
            user.typeKeys("丙");
            EXPECT_EQ(grid.selectedItem(2, kChoice), -1);
            leave(user);
            EXPECT_EQ(grid.selectedItem(2, kChoice), 2);
            EXPECT_EQ(grid.text(2, kChoice), "乙丙");
            EXPECT_FALSE(grid.cellOpen());
        });
        EXPECT_EQ(picks, std::vector<int>{2});
        picks.clear();
    }
}

TEST_F(OpenCell, aPartThatFitsSeveralEntriesOrNoneIsRefused) {
    inOffice([&](User& user, EntryGrid& grid) {
        user.clickCell("fps1", 2, kChoice);
        user.typeKeys("乙");
        user.press("Ctrl+S");
        EXPECT_EQ(grid.refusal(), "有多项符合，请从列表中选择");
        EXPECT_EQ(grid.openText(), "乙");
        user.typeKeys("戊");
        user.press("Ctrl+S");
        EXPECT_EQ(grid.refusal(), "没有这一项");
        EXPECT_EQ(commands, 0);
        EXPECT_TRUE(picks.empty());
        user.press("Esc");
        EXPECT_EQ(grid.text(2, kChoice), "");
        user.press("Ctrl+S");
        EXPECT_EQ(commands, 1);
    });
}

TEST_F(OpenCell, theTextOfOneEntryWinsOverLongerOnesThatContainIt) {
    inOffice([](User& user, EntryGrid& grid) {
        grid.setItems(2, kChoice, {"螺丝钉", "    螺丝", "Bolt"});
        user.clickCell("fps1", 2, kChoice);
        user.typeKeys("螺丝");
        user.press("Tab");
        EXPECT_EQ(grid.selectedItem(2, kChoice), 1);
        user.clickCell("fps1", 2, kChoice);
        user.typeKeys("bol");
        user.press("Tab");
        EXPECT_EQ(grid.selectedItem(2, kChoice), 2);
    });
}

TEST_F(OpenCell, anEmptiedChoiceIsRefusedUnlessItsCellMayBeEmpty) {
    inOffice([&](User& user, EntryGrid& grid) {
        user.pickCell("fps1", 2, kChoice, 1);
        user.press("Delete");
        EXPECT_EQ(grid.refusal(), "请选择一项");
        EXPECT_EQ(grid.selectedItem(2, kChoice), 1);
        user.press("Esc");
        EXPECT_EQ(grid.text(2, kChoice), "甲乙");
        grid.setClearable(2, kChoice, true);
        user.press("Delete");
        EXPECT_EQ(grid.selectedItem(2, kChoice), -1);
        EXPECT_EQ(grid.text(2, kChoice), "");
        EXPECT_EQ(picks, (std::vector<int>{1, -1}));
    });
}

TEST_F(OpenCell, entriesOfTheSameTextAreListedWithTheirCodesAndStayApart) {
    inOffice([&](User& user, EntryGrid& grid) {
        grid.setItems(2, kChoice, {"螺丝", "螺母", "螺丝"});
        EXPECT_THROW(grid.setItemCodes(2, kChoice, {"01"}), std::invalid_argument);
        grid.setItemCodes(2, kChoice, {"01", "02", "03"});
        grid.selectItem(2, kChoice, 2);
        user.clickCell("fps1", 2, kChoice);
        user.press("F4");
        EXPECT_EQ(user.openedList(), (std::vector<std::string>{"螺丝(01)", "螺母", "螺丝(03)"}));
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(2, kChoice), 2);
        EXPECT_EQ(grid.text(2, kChoice), "螺丝");
        user.clickCell("fps1", 2, kChoice);
        user.press("F4");
        user.press("Up");
        user.press("Up");
        user.press("Tab");
        EXPECT_EQ(grid.selectedItem(2, kChoice), 0);
        user.clickCell("fps1", 2, kChoice);
        user.typeKeys("螺丝");
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(2, kChoice), 0) << "the text it held";
        user.pickCell("fps1", 2, kChoice, 1);
        user.typeKeys("螺丝");
        user.press("Enter");
        EXPECT_EQ(grid.refusal(), "有多项符合，请从列表中选择");
    });
}

TEST_F(OpenCell, typingInAnOpenedListReplacesTheEntryThatItMarks) {
    inOffice([&](User& user, EntryGrid& grid) {
        user.pickCell("fps1", 2, kChoice, 1);
        user.clickCell("fps1", 2, kChoice);
        user.press("F4");
        user.typeKeys("丙");
        EXPECT_EQ(grid.openText(), "丙");
        user.press("Esc");
        user.press("F4");
        user.press("Up");
        user.typeKeys("乙");
        user.typeKeys("丙");
        EXPECT_EQ(grid.openText(), "乙丙");
    });
}

TEST_F(OpenCell, escapeInAListGivesTheCellUp) {
    inOffice([&](User& user, EntryGrid& grid) {
        user.pickCell("fps1", 2, kChoice, 1);
        user.clickCell("fps1", 2, kChoice);
        user.press("F4");
        user.press("Down");
        user.press("Esc");
        EXPECT_FALSE(grid.cellOpen());
        EXPECT_EQ(user.openedList(), std::vector<std::string>{});
        EXPECT_EQ(grid.text(2, kChoice), "甲乙");
    });
    EXPECT_EQ(picks, std::vector<int>{1});
}

TEST_F(OpenCell, aTextThatIsTypedAgainIsNoChange) {
    inOffice([&](User& user, EntryGrid& grid) {
        grid.setText(2, kNumber, "5");  // stored before the limits were
        user.typeKeys("5");
        user.press("Tab");
        EXPECT_FALSE(grid.cellOpen());
        EXPECT_EQ(grid.text(2, kNumber), "5");
    });
}

TEST_F(OpenCell, codeThatMovesOnTakesOverWhatItCanAndGivesUpTheRest) {
    inOffice([](User& user, EntryGrid& grid) {
        user.typeKeys("60.");
        grid.setActiveCell(2, kLast);
        EXPECT_FALSE(grid.cellOpen());
        EXPECT_EQ(grid.text(2, kNumber), "60");
        user.clickCell("fps1", 2, kNumber);
        user.typeKeys("5");
        grid.setActiveCell(2, kLast);
        EXPECT_FALSE(grid.cellOpen());
        EXPECT_EQ(grid.text(2, kNumber), "60");
    });
}

TEST_F(OpenCell, aRowThatGoesTakesItsOpenCellAlong) {
    inOffice([](User& user, EntryGrid& grid) {
        user.typeKeys("5");
        grid.deleteRow(kNumber);
        EXPECT_FALSE(grid.cellOpen());
        user.clickCell("fps1", 2, kText);
        user.typeKeys("x");
        grid.setRowCount(0);
        EXPECT_FALSE(grid.cellOpen());
        user.click("cmdAdd");
    });
    EXPECT_EQ(commands, 1);
}

TEST_F(OpenCell, aCellThatIsNotOpenIsCopiedAndPastedInto) {
    inOffice([](User& user, EntryGrid& grid) {
        user.press("Ctrl+C");
        EXPECT_EQ(user.copied(), "50");
        user.paste(" 1,0.5 ");
        EXPECT_TRUE(grid.cellOpen());
        EXPECT_EQ(grid.refusal(), kLimits);
        EXPECT_EQ(grid.openText(), " 1,0.5 ");
        user.press("Esc");
        user.paste("\t６０．５ ");
        EXPECT_FALSE(grid.cellOpen());
        EXPECT_EQ(grid.text(2, kNumber), "60.5");
        user.clickCell("fps1", 2, kText);
        user.paste("甲\r\n乙\n丙");
        EXPECT_EQ(grid.text(2, kText), "甲 乙 丙");
        user.clickCell("fps1", 1, kText);
        user.paste("x");
        EXPECT_EQ(grid.text(1, kText), "") << "a locked cell";
        user.clickCell("fps1", 2, kChoice);
        user.paste("丁\n");
        EXPECT_EQ(grid.selectedItem(2, kChoice), 3);
    });
}

TEST_F(OpenCell, aLineBreakPastedIntoAnOpenCellIsABlank) {
    inOffice([](User& user, EntryGrid& grid) {
        user.clickCell("fps1", 2, kText);
        user.typeKeys("甲");
        user.paste("乙\n丙");
        EXPECT_EQ(grid.openText(), "甲乙 丙");
        user.press("Enter");
        EXPECT_EQ(grid.text(2, kText), "甲乙 丙");
    });
}

}  // namespace
}  // namespace orvenmod::test
