// What the keys do in the memory toolkit: menu shortcuts first, then mnemonics, then the control in focus.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>

#include "platform/memory/memoryentrygrid.h"
#include "platform/memory/memorylistgrid.h"
#include "platform/memory/memorytree.h"
#include "platform/model/listoutput.h"
#include "support/letters.h"
#include "support/memory_user.h"

namespace orvenmod::test {

using namespace platform;
using namespace platform::memory;

namespace {

/// The letter behind '&', 0 for none.
char mnemonicOf(const std::string& caption) {
    const std::size_t at = caption.find('&');
    if (at == std::string::npos || at + 1 >= caption.size()) return 0;
    return static_cast<char>(std::toupper(static_cast<unsigned char>(caption[at + 1])));
}

/// The code of a key by its name, 0 for none.
int codeOf(const std::string& key) {
    static const std::map<std::string, int> codes = {
        {"Enter", kKeyEnter}, {"Up", kKeyUp}, {"Down", kKeyDown}, {"Home", 36},     {"End", 35},    {"PageUp", 33},
        {"PageDown", 34},     {"Esc", 27},    {"Space", 32},      {"Backspace", 8}, {"Delete", 46}, {"Insert", 45}};
    const auto found = codes.find(key);
    return found == codes.end() ? 0 : found->second;
}

/// The column where the arrow leads from where the user stands, at first in the first one.
int columnBeside(const model::ListGridModel& list, const std::string& arrow) {
    const std::vector<int> shown = model::shownColumns(list);
    if (shown.empty()) return -1;
    const auto here = std::ranges::find(shown, list.currentColumn());
    const std::ptrdiff_t from = here == shown.end() ? 0 : here - shown.begin();
    const auto last = static_cast<std::ptrdiff_t>(shown.size()) - 1;
    return shown[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from + (arrow == "Right" ? 1 : -1), 0, last))];
}

bool startsWith(const std::string& text, const std::string& letter) {
    const auto same = [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    };
    return text.size() >= letter.size() && std::equal(letter.begin(), letter.end(), text.begin(), same);
}

/// The nodes that show, from the top.
void collectShown(const model::TreeModel& model, std::size_t parent, std::vector<std::string>& keys) {
    for (const std::size_t child : model.children(parent)) {
        keys.push_back(model.node(child).key);
        if (model.node(child).expanded) collectShown(model, child, keys);
    }
}

}  // namespace

void MemoryUser::press(const std::string& shortcut) {
    requireFront();
    for (MemoryMenu* menu : window_.menus()) {
        if (menu->menuDesign().shortcut != shortcut || !menu->choosable(nullptr)) continue;
        if (!leaveCell()) return;
        guard([menu] { menu->click.raise(); });
        return;
    }
    if (pressInGrid(shortcut) || !leaveCell() || pressInArrangement(shortcut)) return;
    if (turnPage(shortcut) || pressMnemonic(shortcut)) return;
    if (shortcut == "Tab" || shortcut == "Shift+Tab") {
        window_.moveFocus(shortcut == "Tab" ? FocusWay::on : FocusWay::back);
    } else if (ControlCore* focus = window_.focused()) {
        pressOn(*focus, shortcut);
    }
}

void MemoryUser::pressForMenu(const std::string& shortcut, const std::string& chooseMenu) {
    popUpWhile(shortcut, chooseMenu, [&] { press(shortcut); });
}

MemoryListGrid* MemoryUser::lineInFocus() const {
    ControlCore* focus = window_.focused();
    auto* grid = focus ? dynamic_cast<MemoryListGrid*>(&focus->control()) : nullptr;
    return grid && grid->inLine() ? grid : nullptr;
}

bool MemoryUser::pressInArrangement(const std::string& key) {
    if (key == "Ctrl+F") {
        for (Control* each : window_.controls()) {
            auto* grid = dynamic_cast<MemoryListGrid*>(each);
            if (!grid || !grid->design().arranges || !grid->usable()) continue;
            guard([grid] { grid->openLine(); });
            return true;
        }
    }
    ControlCore* focus = window_.focused();
    auto* grid = focus ? dynamic_cast<MemoryListGrid*>(&focus->control()) : nullptr;
    if (!grid || !grid->design().arranges) return false;
    if (key == "Esc" && grid->lineOpen()) {
        guard([grid] { grid->closeLine(); });
        return true;
    }
    if (grid->inLine()) {
        if (key == "Backspace") guard([grid] { grid->typeInLine(""); });
        if (key == "Down" || key == "Up" || key == "Enter" || key == "Tab" || key == "Shift+Tab") grid->leaveLine();
        return true;
    }
    if (key == "Ctrl+H") {
        const int column = std::max(grid->model().currentColumn(), 0);
        guard([&] { grid->headingMenu.raise(column); });
        return true;
    }
    if (key != "Ctrl+C") return false;
    model::CopiedRows copied;
    guard([&] { copied = grid->copySelected(); });
    if (copied.html.empty()) return true;
    clipboard_ = copied.text;
    clipboardHtml_ = copied.html;
    return true;
}

bool MemoryUser::turnPage(const std::string& shortcut) {
    if (shortcut != "Ctrl+PageDown" && shortcut != "Ctrl+PageUp") return false;
    for (Control* each : window_.controls()) {
        auto* tabs = dynamic_cast<MemoryTabs*>(each);
        if (!tabs || !tabs->usable()) continue;
        const int count = static_cast<int>(tabs->design().pages.size());
        const int step = shortcut == "Ctrl+PageDown" ? 1 : count - 1;
        int next = (tabs->tab() + step) % count;
        while (!tabs->tabEnabled(next))
            next = (next + step) % count;
        tabs->setTab(next);
        tabs->focus();
        focusFirstOf(*tabs);
        return true;
    }
    return false;
}

void MemoryUser::focusFirstOf(const ControlCore& container) {
    for (Control* each : window_.controls()) {
        auto* core = dynamic_cast<ControlCore*>(each);
        if (core && core->parent == &container && core->tabStop()) return core->focus();
    }
}

bool MemoryUser::pressMnemonic(const std::string& shortcut) {
    if (shortcut.size() != 5 || shortcut.rfind("Alt+", 0) != 0) return false;
    for (Control* each : window_.controls()) {
        auto* button = dynamic_cast<MemoryButton*>(each);
        if (!button || !button->usable() || mnemonicOf(button->caption()) != shortcut.back()) continue;
        button->focus();
        guard([button] { button->click.raise(); });
        return true;
    }
    return false;
}

void MemoryUser::pressOn(ControlCore& focus, const std::string& key) {
    Control& control = focus.control();
    if (auto* tree = dynamic_cast<MemoryTree*>(&control)) return pressOnTree(*tree, key);
    if (auto* grid = dynamic_cast<MemoryListGrid*>(&control)) return pressOnList(*grid, key);
    if (auto* cells = dynamic_cast<MemoryEntryGrid*>(&control)) return pressOnCells(*cells, key);
    if (auto* combo = dynamic_cast<Combo*>(&control)) {
        const int row = combo->selected() + (key == "Down" ? 1 : key == "Up" ? -1 : 0);
        if (row != combo->selected() && row >= 0 && row < combo->rowCount()) guard([&] { combo->select(row); });
    }
    auto* button = dynamic_cast<Button*>(&control);
    if (button && (key == "Enter" || key == "Space")) return guard([button] { button->click.raise(); });
    auto* edit = dynamic_cast<Edit*>(&control);
    if (edit && key == "Ctrl+A") window_.mark();
    if (edit && codeOf(key) != 0) guard([&] { edit->keyDown.raise(codeOf(key)); });
}

void MemoryUser::pressOnCells(MemoryEntryGrid& cells, const std::string& key) {
    if (cells.activeRow() == 0) return;
    if (key == "Space") return clickCell(cells.name(), cells.activeColumn(), cells.activeRow());
    if (key != "Left" && key != "Right") return;
    int column = cells.activeColumn();
    do
        column += key == "Left" ? -1 : 1;
    while (column >= 1 && column <= cells.columnCount() && cells.columnHidden(column));
    if (column >= 1 && column <= cells.columnCount()) cells.setActiveCell(column, cells.activeRow());
}

// As many rows make a page as the grid's height shows below its heading.
void MemoryUser::pressOnList(MemoryListGrid& grid, const std::string& key) {
    constexpr int kRowTwips = 360;
    const int last = grid.rowCount() - 1;
    const int page = std::max(static_cast<int>(grid.height()) / kRowTwips - 1, 1);
    const std::map<std::string, int> steps = {{"Up", -1},      {"Down", 1},   {"PageUp", -page}, {"PageDown", page},
                                              {"Home", -last}, {"End", last}, {"Space", 0}};
    if (codeOf(key) != 0) guard([&] { grid.keyDown.raise(codeOf(key)); });
    for (int row = 1; key == "Ctrl+A" && row <= last; ++row)
        grid.setSelected(row, true);
    if (key == "Left" || key == "Right") grid.model().setCurrentColumn(columnBeside(grid.model(), key));
    const bool only = key.rfind("Ctrl+", 0) == 0;
    const auto step = steps.find(only ? key.substr(5) : key);
    if (step == steps.end() || last < 1) return;
    const int row = std::clamp(grid.currentRow() + step->second, 1, last);
    only ? grid.model().setCurrentOnly(row) : grid.setCurrentRow(row);
}

void MemoryUser::typeOnList(MemoryListGrid& grid, const std::string& letter) {
    if (letter == " ") return;
    if (grid.typed) return guard([&] { grid.typed.raise(letter); });
    int column = 0;
    while (column + 1 < grid.columnCount() && grid.columnHidden(column))
        ++column;
    const int last = grid.rowCount() - 1;
    for (int step = 1; step <= last; ++step) {
        const int row = (grid.currentRow() + step - 1) % last + 1;
        if (startsWith(grid.text(row, column), letter)) return grid.setCurrentRow(row);
    }
}

void MemoryUser::pressOnTree(MemoryTree& tree, const std::string& key) {
    std::vector<std::string> keys;
    collectShown(tree.model(), model::TreeModel::kRoot, keys);
    if (keys.empty()) return;
    const auto here = std::find(keys.begin(), keys.end(), tree.selected());
    const bool none = here == keys.end();
    const bool leads = key == "Home" || key == "End" || key == "Up" || key == "Down";
    if (none && !leads) return;
    const auto last = static_cast<std::ptrdiff_t>(keys.size()) - 1;
    auto next = none ? 0 : here - keys.begin();
    if (key == "Home")
        next = 0;
    else if (key == "End")
        next = last;
    else if (key == "Up" || key == "Down")
        next = none ? 0 : std::clamp<std::ptrdiff_t>(next + (key == "Up" ? -1 : 1), 0, last);
    else if (key == "Right" && !tree.model().children(tree.model().slot(*here)).empty()) {
        if (!tree.expanded(*here)) return tree.setExpanded(*here, true);
        ++next;
    } else if (key == "Left") {
        if (tree.expanded(*here)) return tree.setExpanded(*here, false);
        if (tree.parent(*here).empty()) return;
        next = std::find(keys.begin(), keys.end(), tree.parent(*here)) - keys.begin();
    }
    goTo(tree, keys[static_cast<std::size_t>(next)]);
}

void MemoryUser::typeOnTree(MemoryTree& tree, const std::string& letter) {
    std::vector<std::string> keys;
    collectShown(tree.model(), model::TreeModel::kRoot, keys);
    const auto here = std::find(keys.begin(), keys.end(), tree.selected());
    if (here != keys.end()) std::rotate(keys.begin(), here + 1, keys.end());
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&](const std::string& key) { return startsWith(tree.text(key), letter); });
    if (found != keys.end()) goTo(tree, *found);
}

void MemoryUser::goTo(MemoryTree& tree, const std::string& key) {
    if (key == tree.selected()) return;
    tree.select(key);
    guard([&] { tree.nodeClick.raise(key); });
}

void MemoryUser::typeKeys(const std::string& text) {
    requireFront();
    for (const std::string& letter : lettersOf(text)) {
        ControlCore* focus = window_.focused();
        if (!focus) return;
        Control& control = focus->control();
        if (auto* edit = dynamic_cast<Edit*>(&control)) {
            const std::string next = (window_.marked() ? std::string() : edit->text()) + letter;
            guard([&] { edit->setText(next); });
        } else if (auto* line = lineInFocus()) {
            guard([&] { line->typeInLine(letter); });
        } else if (auto* grid = dynamic_cast<MemoryListGrid*>(&control)) {
            typeOnList(*grid, letter);
        } else if (auto* tree = dynamic_cast<MemoryTree*>(&control)) {
            typeOnTree(*tree, letter);
        } else if (auto* cells = dynamic_cast<MemoryEntryGrid*>(&control)) {
            if (!cells->model().takesTyping(cells->activeColumn(), cells->activeRow())) continue;
            const bool replaces = cells->marked() || (cells->listOpen() && cells->model().markedItem() >= 0);
            cells->type(replaces ? letter : cells->openText() + letter);
        }
    }
}

}  // namespace orvenmod::test
