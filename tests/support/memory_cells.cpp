// The scripted user's steps in the cells of an entry grid, and what the keys do there.
#include <algorithm>
#include <numeric>

#include "platform/memory/memoryentrygrid.h"
#include "support/letters.h"
#include "support/memory_user.h"

namespace orvenmod::test {

using namespace platform;
using namespace platform::memory;

namespace {

std::string placeOf(const std::string& grid, int column, int row) {
    return grid + " column " + std::to_string(column) + " row " + std::to_string(row);
}

}  // namespace

MemoryEntryGrid& MemoryUser::reachCell(const std::string& grid, int column, int row) {
    auto& reached = reach<MemoryEntryGrid>(grid);
    const std::string place = placeOf(grid, column, row);
    if (row < 1 || row > reached.rowCount() || column < 1 || column > reached.columnCount())
        stop("there is no " + place);
    if (reached.columnHidden(column)) stop(place + " is hidden");
    reached.setActiveCell(column, row);
    return reached;
}

bool MemoryUser::leaveCell() {
    requireFront();
    return window_.takeOver();
}

MemoryEntryGrid* MemoryUser::focusedGrid() const { return dynamic_cast<MemoryEntryGrid*>(window_.focused()); }

void MemoryUser::typeCell(const std::string& grid, int column, int row, const std::string& text) {
    const auto& before = control<EntryGrid>(grid);
    const bool same = before.cellOpen() && before.activeColumn() == column && before.activeRow() == row;
    if (!same && !leaveCell()) stop("the open cell isn't left for " + placeOf(grid, column, row));
    auto& reached = reachCell(grid, column, row);
    if (!reached.model().takesText(column, row)) stop(placeOf(grid, column, row) + " takes no text");
    std::string typed;
    if (text.empty() && !reached.text(column, row).empty()) reached.type("");
    for (const std::string& letter : lettersOf(text)) {
        if (row > reached.rowCount()) return;
        reached.type(typed += letter);
    }
    reached.takeOver();
}

void MemoryUser::paste(const std::string& text) {
    clipboard_ = text;
    press("Ctrl+V");
}

std::string MemoryUser::copied() { return clipboard_; }

std::string MemoryUser::copiedHtml() { return clipboardHtml_; }

std::vector<std::string> MemoryUser::openedList() {
    auto* grid = focusedGrid();
    if (!grid || !grid->listOpen()) return {};
    const std::vector<std::string> texts = grid->model().listTexts(grid->activeColumn(), grid->activeRow());
    std::vector<std::string> shown;
    for (const int item : grid->listed())
        shown.push_back(texts[static_cast<std::size_t>(item)]);
    return shown;
}

void MemoryUser::pickCell(const std::string& grid, int column, int row, int item) {
    const auto& before = control<EntryGrid>(grid);
    const bool same = before.cellOpen() && before.activeColumn() == column && before.activeRow() == row;
    if (!same && !leaveCell()) stop("the open cell isn't left for " + placeOf(grid, column, row));
    auto& reached = reachCell(grid, column, row);
    const std::string place = placeOf(grid, column, row);
    if (reached.cellType(column, row) != CellType::combo) stop(place + " is no combo");
    if (reached.locked(column, row)) stop(place + " is locked");
    if (item < 0 || item >= static_cast<int>(reached.model().items(column, row).size())) {
        stop(place + " has no entry " + std::to_string(item));
    }
    reached.pick(item);
}

void MemoryUser::clickCell(const std::string& grid, int column, int row) {
    if (!leaveCell()) return;
    auto& reached = reachCell(grid, column, row);
    const CellType type = reached.cellType(column, row);
    if (type != CellType::button && type != CellType::checkBox) return;
    if (reached.locked(column, row)) stop(placeOf(grid, column, row) + " is locked");
    if (type == CellType::checkBox) reached.setText(column, row, reached.text(column, row) == "1" ? "0" : "1");
    if (type == CellType::button) guard([&] { reached.buttonClick.raise(column, row); });
}

bool MemoryUser::pressInGrid(const std::string& key) {
    auto* grid = focusedGrid();
    if (!grid || grid->activeRow() == 0) return false;
    if (grid->listOpen() && pressInList(*grid, key)) return true;
    const int column = grid->activeColumn();
    const int row = grid->activeRow();
    const CellType type = grid->cellType(column, row);
    if (key == "Esc") {
        grid->giveUp();
    } else if (type == CellType::combo && (key == "F4" || (key == "F2" && !grid->cellOpen()))) {
        grid->openList();
    } else if (key == "F2") {
        grid->openField();
    } else if (key == "Delete" && !grid->cellOpen() && grid->model().takesTyping(column, row)) {
        grid->type("");
        grid->takeOver();
    } else if (key == "Ctrl+C") {
        if (!grid->cellOpen()) clipboard_ = grid->text(column, row);
        if (grid->marked()) clipboard_ = grid->openText();
    } else if (key == "Ctrl+V") {
        return pasteInto(*grid);
    } else if (key == "Enter") {
        if (type == CellType::button) {
            clickCell(grid->name(), column, row);
            return true;
        }
        if (grid->takeOver()) advance(*grid);
    } else if (key == "Up" || key == "Down") {
        const int next = key == "Up" ? row - 1 : row + 1;
        if (grid->takeOver() && next >= 1 && next <= grid->rowCount()) grid->setActiveCell(column, next);
    } else {
        return grid->cellOpen() && pressInField(*grid, key);
    }
    return true;
}

// The field is written at its end: where the cursor stands in it is the toolkit's own.
bool MemoryUser::pressInField(MemoryEntryGrid& grid, const std::string& key) {
    const bool marked = grid.marked();
    if (key == "Backspace") {
        std::vector<std::string> letters = marked ? std::vector<std::string>() : lettersOf(grid.openText());
        if (!letters.empty()) letters.pop_back();
        grid.type(std::accumulate(letters.begin(), letters.end(), std::string()));
    } else if (key == "Space") {
        typeKeys(" ");
    } else if (key == "Ctrl+A") {
        grid.setMarked(true);
    } else if (marked && (key == "Ctrl+X" || key == "Delete")) {
        if (key == "Ctrl+X") clipboard_ = grid.openText();
        grid.type("");
    } else if (key == "Left" || key == "Right" || key == "Home" || key == "End") {
        grid.setMarked(false);
    } else {
        return key == "Ctrl+X" || key == "Delete";
    }
    return true;
}

bool MemoryUser::pressInList(MemoryEntryGrid& grid, const std::string& key) {
    const int marked = grid.model().markedItem();
    if (key == "Up" || key == "Down") {
        const std::vector<int> listed = grid.listed();
        const auto last = static_cast<std::ptrdiff_t>(listed.size()) - 1;
        const auto here = std::find(listed.begin(), listed.end(), marked) - listed.begin();
        // From nowhere, Down comes to the first entry and Up to the last.
        const auto next = here > last ? (key == "Up" ? last : 0) : here + (key == "Up" ? -1 : 1);
        grid.model().markItem(listed[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(next, 0, last))]);
        return true;
    }
    if (key != "Enter" || marked < 0) return false;
    grid.pick(marked);
    advance(grid);
    return true;
}

void MemoryUser::advance(MemoryEntryGrid& grid) {
    const auto [column, row] = grid.model().nextValue();
    if (row > 0)
        grid.setActiveCell(column, row);
    else
        guard([&grid] { grid.leftByEnter.raise(); });
}

bool MemoryUser::pasteInto(MemoryEntryGrid& grid) {
    const bool open = grid.cellOpen();
    if (!grid.model().takesTyping(grid.activeColumn(), grid.activeRow())) return true;
    grid.type(open && !grid.marked() ? grid.openText() + clipboard_ : clipboard_);
    if (!open) grid.takeOver();
    return true;
}

}  // namespace orvenmod::test
