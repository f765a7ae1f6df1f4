#include "support/memory_user.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory/memorylistgrid.h"
#include "platform/memory/memorytree.h"
#include "platform/model/listoutput.h"
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

MemoryListGrid& MemoryUser::reachRow(const std::string& grid, int row) {
    auto& reached = reach<MemoryListGrid>(grid);
    if (row < 0 || row >= reached.rowCount()) stop(grid + " has no row " + std::to_string(row));
    if (row > 0) lookAt(reached, row);
    return reached;
}

void MemoryUser::lookAt(MemoryListGrid& grid, int row) {
    grid.model().lookAgain();
    for (int column = 0; column < grid.columnCount(); ++column) {
        if (!grid.columnHidden(column)) grid.model().shownText(row, column);
    }
    if (const auto failure = grid.model().takeFailure()) window_.toolkit().showEscaped(*failure);
}

void MemoryUser::click(const std::string& button, int index) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryButton>(button, index);
    guard([&reached] { reached.click.raise(); });
}

void MemoryUser::clickTool(const std::string& key) {
    requireFront();
    if (!leaveCell()) return;
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
    if (!leaveCell()) return;
    auto* entry = dynamic_cast<MemoryMenu*>(window_.findCore(menu));
    if (!entry) stop("no such menu: " + menu);
    if (!entry->choosable(nullptr)) stop("the menu " + menu + " is hidden or disabled");
    guard([entry] { entry->click.raise(); });
}

void MemoryUser::type(const std::string& edit, const std::string& text, int index) {
    if (!leaveCell()) return;
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
    if (!leaveCell()) return;
    auto& reached = reach<MemoryCombo>(combo, index);
    if (row < 0 || row >= reached.rowCount()) stop(combo + " has no row " + std::to_string(row));
    if (row == reached.selected()) return;
    guard([&reached, row] { reached.select(row); });
}

void MemoryUser::pickDate(const std::string& picker, const Date& date) {
    if (!leaveCell()) return;
    reach<MemoryDatePicker>(picker).setValue(date);
}

void MemoryUser::clickNode(const std::string& tree, const std::string& key) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryTree>(tree);
    if (!reached.has(key)) stop(tree + " has no node " + key);
    reached.ensureVisible(key);  // the user opens the nodes above
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
    reached.select(key);
    guard([&reached, &key] { reached.nodeClick.raise(key); });
}

void MemoryUser::rightClick(const std::string& control, const std::string& chooseMenu) {
    if (!leaveCell()) return;
    popUpOver(reach<ControlCore>(control).control(), chooseMenu);
}

void MemoryUser::rightClickNode(const std::string& tree, const std::string& key, const std::string& chooseMenu) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryTree>(tree);
    if (!reached.has(key)) stop(tree + " has no node " + key);
    reached.ensureVisible(key);  // the user opens the nodes above
    goTo(reached, key);
    popUpOver(reached, chooseMenu);
}

void MemoryUser::rightClickRow(const std::string& grid, int row, const std::string& chooseMenu) {
    if (!leaveCell()) return;
    auto& reached = reachRow(grid, row);
    reached.setCurrentRow(row);
    popUpOver(reached, chooseMenu);
}

void MemoryUser::popUpOver(Control& control, const std::string& chooseMenu) {
    popUpWhile(control.name(), chooseMenu, [&] {
        if (auto* tree = dynamic_cast<Tree*>(&control)) {
            guard([tree] { tree->mouseDown.raise(MouseButton::right); });
        } else if (auto* grid = dynamic_cast<ListGrid*>(&control)) {
            guard([grid] { grid->mouseDown.raise(MouseButton::right); });
        }
    });
}

void MemoryUser::popUpWhile(const std::string& over, const std::string& chooseMenu, const std::function<void()>& act) {
    popUp_ = {true, chooseMenu};
    act();
    const bool missed = popUp_.waiting && !chooseMenu.empty();
    popUp_ = {};
    if (missed) stop("no menu popped up over " + over);
}

namespace {

/// A row is clicked in its first column that shows.
void standInFirstColumn(MemoryListGrid& grid) {
    for (int place = 0; place < grid.columnCount(); ++place) {
        const int column = grid.columnAt(place);
        if (!grid.columnHidden(column)) return grid.model().setCurrentColumn(column);
    }
}

}  // namespace

void MemoryUser::selectRow(const std::string& grid, int row) {
    if (!leaveCell()) return;
    auto& reached = reachRow(grid, row);
    if (row == 0) stop("the heading of " + grid + " can't be selected");
    reached.leaveLine();
    standInFirstColumn(reached);
    reached.setCurrentRow(row);
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
}

void MemoryUser::selectCell(const std::string& grid, int row, int column) {
    selectRow(grid, row);
    auto& reached = reachRow(grid, row);
    if (reached.columnHidden(column)) stop(grid + " hides column " + std::to_string(column));
    reached.model().setCurrentColumn(column);
}

void MemoryUser::clickHeading(const std::string& grid, int column) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryListGrid>(grid);
    if (reached.columnHidden(column)) stop(grid + " hides column " + std::to_string(column));
    if (!reached.design().arranges) return;
    guard([&reached, column] { reached.sortOn(column); });
}

void MemoryUser::rightClickHeading(const std::string& grid, int column, const std::string& chooseMenu) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryListGrid>(grid);
    if (reached.columnHidden(column)) stop(grid + " hides column " + std::to_string(column));
    popUpWhile(grid, chooseMenu, [&] {
        reached.model().setCurrentColumn(column);
        guard([&] { reached.headingMenu.raise(column); });
    });
}

void MemoryUser::dragHeading(const std::string& grid, int column, int ontoColumn) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryListGrid>(grid);
    if (reached.design().arranges) reached.moveColumn(column, reached.model().placeOf(ontoColumn));
}

void MemoryUser::alsoSelectRow(const std::string& grid, int row) {
    if (!leaveCell()) return;
    auto& reached = reachRow(grid, row);
    if (row == 0) stop("the heading of " + grid + " can't be selected");
    standInFirstColumn(reached);
    reached.model().setCurrentOnly(row);
    reached.setSelected(row, !reached.isSelected(row));
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
}

void MemoryUser::doubleClickRow(const std::string& grid, int row) {
    if (!leaveCell()) return;
    auto& reached = reachRow(grid, row);
    if (row == 0) {
        const std::vector<int> shown = model::shownColumns(reached.model());
        for (int click = 0; click < 2 && !shown.empty(); ++click)
            clickHeading(grid, shown.front());
        return;
    }
    reached.setCurrentRow(row);
    guard([&reached] { reached.mouseDown.raise(MouseButton::left); });
    guard([&reached] { reached.doubleClick.raise(); });
}

void MemoryUser::keyOnGrid(const std::string& grid, int key) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryListGrid>(grid);
    guard([&reached, key] { reached.keyDown.raise(key); });
}

void MemoryUser::chooseTab(const std::string& tabs, int tab) {
    if (!leaveCell()) return;
    auto& reached = reach<MemoryTabs>(tabs);
    if (tab < 0 || tab >= static_cast<int>(reached.design().pages.size())) {
        stop(tabs + " has no tab " + std::to_string(tab));
    }
    if (!reached.tabEnabled(tab)) stop(tabs + " has tab " + std::to_string(tab) + " disabled");
    reached.setTab(tab);
}

void MemoryUser::closeWindow() {
    requireFront();
    if (!leaveCell()) return;
    window_.close();
}

void MemoryUser::resizeWindow(float width, float height) {
    requireFront();
    if (!window_.design().resizable) stop("the window's size is fixed");
    guard([this, width, height] {
        window_.setInnerSize(std::min(width, kLargestInner), std::min(height, kLargestInner));
    });
}

void MemoryUser::rest() { window_.toolkit().passTick(); }

}  // namespace orvenmod::test
