// A cell's text and what it takes stand in the shared model. What a screen adds to it, a list that hangs open and a
// text that is marked, stands here, since keys mean other things by it: Return in an open list picks, in a field it
// leaves.
#include "platform/memory/memoryentrygrid.h"

#include <numeric>

#include "platform/memory/memorytoolkit.h"
#include "platform/model/cellinput.h"

namespace orvenmod::platform::memory {

void MemoryEntryGrid::setActiveCell(int column, int row) {
    if (column != activeColumn() || row != activeRow()) {
        if (!takeOver()) giveUp();
    }
    model_.setActiveCell(column, row);
}

void MemoryEntryGrid::setNumberRule(int column, int row, const NumberRule& rule) {
    model_.setNumberRule(column, row, rule);
}

void MemoryEntryGrid::setItems(int column, int row, const ItemTexts& items) { model_.setItems(column, row, items); }

void MemoryEntryGrid::setItemCodes(int column, int row, const ItemTexts& codes) {
    model_.setItemCodes(column, row, codes);
}

void MemoryEntryGrid::type(const std::string& text) {
    if (!openCell()) return;
    model_.typed(text);
    typed_ = text;
    marked_ = false;
    const bool choice = cellType(activeColumn(), activeRow()) == CellType::combo;
    listOpen_ = choice && !model::itemsWith(text, model_.items(activeColumn(), activeRow())).empty();
    if (choice) return;
    toolkit().guard([this] { editChange.raise(activeColumn(), activeRow()); });
}

void MemoryEntryGrid::setItemLeader(int column, int row, int leader) { model_.setItemLeader(column, row, leader); }

bool MemoryEntryGrid::openCell() {
    bool read = false;
    toolkit().guard([&] {
        model_.openCell();
        read = true;
    });
    return read;
}

bool MemoryEntryGrid::takeOver() {
    const int column = activeColumn();
    const int row = activeRow();
    const auto left = model_.takeOver(toolkit().today());
    if (left.picked) raisePick(column, row, *left.picked);
    return left.refusal.empty();
}

void MemoryEntryGrid::giveUp() {
    const int column = activeColumn();
    const int row = activeRow();
    if (model_.giveUp()) toolkit().guard([&] { editChange.raise(column, row); });
}

void MemoryEntryGrid::pick(int item) {
    model_.giveUp();
    selectItem(activeColumn(), activeRow(), item);
    raisePick(activeColumn(), activeRow(), item);
}

void MemoryEntryGrid::openField() {
    if (cellOpen() || !openCell()) return;
    listOpen_ = false;
    marked_ = true;
    typed_.clear();
}

void MemoryEntryGrid::openList() {
    openField();
    listOpen_ = cellOpen();
}

std::vector<int> MemoryEntryGrid::listed() const {
    const auto& items = model_.items(activeColumn(), activeRow());
    std::vector<int> places = model::itemsWith(typed_, items);
    if (!places.empty()) return places;
    places.resize(items.size());
    std::iota(places.begin(), places.end(), 0);
    return places;
}

void MemoryEntryGrid::raisePick(int column, int row, int item) {
    toolkit().guard([&] { comboSelectionChange.raise(column, row); });
    toolkit().guard([&] { comboCloseUp.raise(column, row, item); });
}

}  // namespace orvenmod::platform::memory
