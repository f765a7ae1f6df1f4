#include "support/memory_user.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory/memoryentrygrid.h"
#include "platform/memory/memorylistgrid.h"
#include "platform/memory/memorytree.h"
#include "support/letters.h"

namespace orvenmod::test {

using namespace platform;
using namespace platform::memory;

void MemoryUser::stop(const std::string& why) const {
    ADD_FAILURE() << window_.name() << ": " << why;
    throw ScriptStopped();
}

void MemoryUser::requireFront() const {
    if (!window_.shown()) stop("the window is closed, no user can act in it");
    if (window_.toolkit().front() != &window_) stop("another window lies in front");
}

template <class Kind>
Kind& MemoryUser::reach(const std::string& name, int index) {
    requireFront();
    ControlCore* core = window_.findCore(name, index);
    const std::string shownName = index < 0 ? name : name + "(" + std::to_string(index) + ")";
    auto* control = dynamic_cast<Kind*>(core);
    if (!control) stop("no such control for this step: " + shownName);
    if (!core->shown()) stop(shownName + " is not in sight");
    if (!core->usable()) stop(shownName + " is disabled");
    if (core->tabStop()) core->focus();
    return *control;
}

MemoryListGrid& MemoryUser::reachRow(const std::string& grid, int row) {
    auto& reached = reach<MemoryListGrid>(grid);
    if (row < 0 || row >= reached.rowCount()) stop(grid + " has no row " + std::to_string(row));
    return reached;
}

MemoryEntryGrid& MemoryUser::reachCell(const std::string& grid, int column, int row) {
    auto& reached = reach<MemoryEntryGrid>(grid);
    const std::string place = " column " + std::to_string(column) + " row " + std::to_string(row);
    if (row < 1 || row > reached.rowCount() || column < 1 || column > reached.columnCount()) {
        stop(grid + " has no" + place);
    }
    if (reached.columnHidden(column)) stop(grid + place + " is hidden");
    reached.setActiveCell(column, row);
    return reached;
}

void MemoryUser::click(const std::string& button, int index) {
    auto& reached = reach<MemoryButton>(button, index);
    guard([&reached] { reached.click.raise(); });
}

void MemoryUser::clickTool(const std::string& key) {
    requireFront();
    for (Control* each : window_.controls()) {
        auto* toolbar = dynamic_cast<MemoryToolbar*>(each);
        if (!toolbar || !toolbar->hasButton(key)) continue;
        if (!toolbar->usable() || !toolbar->buttonVisible(key)) stop("the toolbar button " + key + " is not in reach");
        if (!toolbar->buttonEnabled(key)) stop("the toolbar button " + key + " is disabled");
        guard([toolbar, &key] { toolbar->buttonClick.raise(key); });
        return;
    }
    stop("no such toolbar button: " + key);
}

void MemoryUser::chooseMenu(const std::string& menu) {
    requireFront();
    auto* entry = dynamic_cast<MemoryMenu*>(window_.findCore(menu));
    if (!entry) stop("no such menu: " + menu);
    if (!entry->choosable(nullptr)) stop("the menu " + menu + " is hidden or disabled");
    guard([entry] { entry->click.raise(); });
}

void MemoryUser::type(const std::string& edit, const std::string& text, int index) {
    typeLetters(reach<MemoryEdit>(edit, index), text);
}

void MemoryUser::typeLetters(Edit& edit, const std::string& text) {
    if (text.empty() && !edit.text().empty()) {
        guard([&edit] { edit.setText(""); });
        return;
    }
    bool first = true;
    for (const std::string& letter : lettersOf(text)) {
        const std::string next = first ? letter : edit.text() + letter;  // the first takes the place of what was there
        first = false;
        guard([&edit, &next] { edit.setText(next); });
    }
}

void MemoryUser::pick(const std::string& combo, int row, int index) {
    auto& reached = reach<MemoryCombo>(combo, index);
    if (row < 0 || row >= reached.rowCount()) stop(combo + " has no row " + std::to_string(row));
    if (row == reached.selected()) return;
    guard([&reached, row] { reached.select(row); });
}

void MemoryUser::pickDate(const std::string& picker, const Date& date) {
    reach<MemoryDatePicker>(picker).setValue(date);
}

void MemoryUser::clickNode(const std::string& tree, const std::string& key) {
    auto& reached = reach<MemoryTree>(tree);
    if (!reached.has(key)) stop(tree + " has no node " + key);
    reached.ensureVisible(key);  // the user opens the nodes above
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
    reached.select(key);
    guard([&reached, &key] { reached.nodeClick.raise(key); });
}

void MemoryUser::rightClick(const std::string& control, const std::string& chooseMenu) {
    popUpOver(reach<ControlCore>(control).control(), chooseMenu);
}

void MemoryUser::rightClickNode(const std::string& tree, const std::string& key, const std::string& chooseMenu) {
    auto& reached = reach<MemoryTree>(tree);
    if (!reached.has(key)) stop(tree + " has no node " + key);
    reached.ensureVisible(key);  // the user opens the nodes above
    goTo(reached, key);
    popUpOver(reached, chooseMenu);
}

void MemoryUser::rightClickRow(const std::string& grid, int row, const std::string& chooseMenu) {
    auto& reached = reachRow(grid, row);
    if (reached.isSelected(row))
        reached.model().setCurrentOnly(row);
    else
        reached.setCurrentRow(row);
    popUpOver(reached, chooseMenu);
}

void MemoryUser::popUpOver(Control& control, const std::string& chooseMenu) {
    popUp_ = {true, chooseMenu};
    if (auto* tree = dynamic_cast<Tree*>(&control)) {
        guard([tree] { tree->mouseDown.raise(MouseButton::right); });
    } else if (auto* grid = dynamic_cast<ListGrid*>(&control)) {
        guard([grid] { grid->mouseDown.raise(MouseButton::right); });
    }
    const bool missed = popUp_.waiting && !chooseMenu.empty();
    popUp_ = {};
    if (missed) stop("no menu popped up over " + control.name());
}

void MemoryUser::selectRow(const std::string& grid, int row) {
    auto& reached = reachRow(grid, row);
    if (row == 0) stop("the heading of " + grid + " can't be selected");
    reached.setCurrentRow(row);
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
}

void MemoryUser::alsoSelectRow(const std::string& grid, int row) {
    auto& reached = reachRow(grid, row);
    if (row == 0) stop("the heading of " + grid + " can't be selected");
    reached.model().setCurrentOnly(row);
    reached.setSelected(row, !reached.isSelected(row));
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
}

void MemoryUser::doubleClickRow(const std::string& grid, int row) {
    auto& reached = reachRow(grid, row);
    if (row == 0) return;
    reached.setCurrentRow(row);
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
    guard([&reached] { reached.doubleClick.raise(); });
}

void MemoryUser::keyOnGrid(const std::string& grid, int key) {
    auto& reached = reach<MemoryListGrid>(grid);
    guard([&reached, key] { reached.keyDown.raise(key); });
}

void MemoryUser::typeCell(const std::string& grid, int column, int row, const std::string& text) {
    auto& reached = reachCell(grid, column, row);
    if (!reached.model().takesText(column, row)) {
        stop(grid + " takes no text in column " + std::to_string(column) + " row " + std::to_string(row));
    }
    const std::string before = reached.text(column, row);
    std::string typed;
    const auto write = [&](const std::string& next) {
        if (!reached.model().typed(column, row, next)) return;  // the cell refuses the letter
        typed = next;
        guard([&] { reached.editChange.raise(column, row); });
    };
    if (text.empty() && !before.empty()) write("");
    for (const std::string& letter : lettersOf(text))
        write(typed + letter);
    if (row <= reached.rowCount()) reached.model().finishEdit(column, row, before);
}

void MemoryUser::pickCell(const std::string& grid, int column, int row, int item) {
    auto& reached = reachCell(grid, column, row);
    const std::string place = grid + " column " + std::to_string(column) + " row " + std::to_string(row);
    if (reached.cellType(column, row) != CellType::combo) stop(place + " is no combo");
    if (reached.locked(column, row)) stop(place + " is locked");
    if (item < 0 || item >= static_cast<int>(reached.model().items(column, row).size())) {
        stop(place + " has no entry " + std::to_string(item));
    }
    reached.selectItem(column, row, item);
    guard([&] { reached.comboSelectionChange.raise(column, row); });
    guard([&] { reached.comboCloseUp.raise(column, row, item); });
}

void MemoryUser::clickCell(const std::string& grid, int column, int row) {
    auto& reached = reachCell(grid, column, row);
    const CellType type = reached.cellType(column, row);
    if (type != CellType::button && type != CellType::checkBox) return;
    if (reached.locked(column, row)) {
        stop(grid + " column " + std::to_string(column) + " row " + std::to_string(row) + " is locked");
    }
    if (type == CellType::checkBox) reached.setText(column, row, reached.text(column, row) == "1" ? "0" : "1");
    if (type == CellType::button) guard([&] { reached.buttonClick.raise(column, row); });
}

void MemoryUser::chooseTab(const std::string& tabs, int tab) {
    auto& reached = reach<MemoryTabs>(tabs);
    if (tab < 0 || tab >= static_cast<int>(reached.design().pages.size())) {
        stop(tabs + " has no tab " + std::to_string(tab));
    }
    if (!reached.tabEnabled(tab)) stop(tabs + " has tab " + std::to_string(tab) + " disabled");
    reached.setTab(tab);
}

void MemoryUser::closeWindow() {
    requireFront();
    window_.close();
}

void MemoryUser::resizeWindow(float width, float height) {
    requireFront();
    if (!window_.design().resizable) stop("the window's size is fixed");
    guard([this, width, height] {
        window_.setInnerSize(std::min(width, kLargestInner), std::min(height, kLargestInner));
    });
}

void MemoryUser::answer(MessageKind kind, const std::string& text, Answer answer) {
    book_.addAnswer(kind, text, answer);
}

}  // namespace orvenmod::test
