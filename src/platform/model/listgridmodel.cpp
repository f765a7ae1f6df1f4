#include "platform/model/listgridmodel.h"

#include <algorithm>
#include <stdexcept>

#include "platform/date.h"
#include "platform/failuretext.h"
#include "platform/numberformat.h"

namespace orvenmod::platform::model {

ListGridModel::ListGridModel(const std::vector<GridColumn>& columns, int fixedColumns) : fixedColumns_(fixedColumns) {
    for (const GridColumn& design : columns) {
        const int alignment = static_cast<int>(design.alignment);
        columns_.push_back({std::string(design.title),
                            design.width,
                            alignment,
                            static_cast<int>(Alignment::centre),
                            design.hidden,
                            {}});
    }
    setColumnCount(std::max(static_cast<int>(columns.size()), fixedColumns));
}

void ListGridModel::bind(std::shared_ptr<const RowSource> source) {
    source_ = std::move(source);
    dropRows(source_ ? source_->rowCount() : 0);
    if (source_) setColumnCount(fixedColumns_ + source_->columnCount());
    if (rowCount() > 1) setCurrentRow(1);
}

void ListGridModel::setRowCount(int rows) {
    if (rows < 1) throw std::out_of_range("a grid has at least its heading");
    if (rows == 1) {
        source_.reset();
        dropRows(0);
        return;
    }
    if (source_) throw std::logic_error("the rows of a bound grid are its source's");
    const auto wanted = static_cast<std::size_t>(rows) - 1;
    while (rows_.size() > wanted)
        removeRow(rowCount() - 1);
    while (rows_.size() < wanted)
        addRow("");
}

void ListGridModel::addRow(std::string_view cells) {
    if (source_) throw std::logic_error("the rows of a bound grid are its source's");
    std::vector<std::string> row;
    for (std::size_t from = 0;;) {
        const std::size_t tab = cells.find('\t', from);
        row.emplace_back(cells.substr(from, tab == std::string_view::npos ? tab : tab - from));
        if (tab == std::string_view::npos) break;
        from = tab + 1;
    }
    if (static_cast<int>(row.size()) > columnCount_) setColumnCount(static_cast<int>(row.size()));
    rows_.append();
    own_.push_back(std::move(row));
    forgetTexts();
}

void ListGridModel::removeRow(int row) {
    const std::size_t slot = slotOf(row);
    const bool wasCurrent = slot == current_;
    const bool wasSelected = selected_.test(slot);
    setSelected(row, false);
    colours_.erase(slot);
    if (!source_) own_[slot] = {};
    if (!source_ && slot + 1 == rows_.slotCount()) {
        rows_.truncate(rows_.heldCount() - 1);
        own_.resize(rows_.slotCount());
    } else {
        rows_.remove(static_cast<std::size_t>(row) - 1);
    }
    if (!wasCurrent) return;
    current_ = kNone;
    if (rows_.size() == 0) return;
    const int next = std::min(row, rowCount() - 1);
    setCurrentOnly(next);
    if (wasSelected) setSelected(next, true);
}

std::string_view ListGridModel::value(int row, int column) const {
    checkColumn(column);
    if (row == 0) return columns_[static_cast<std::size_t>(column)].title;
    readyRow(slotOf(row));
    return valueAt(slotOf(row), column);
}

std::string_view ListGridModel::valueAt(std::size_t slot, int column) const {
    const std::string_view held = heldAt(slot, column);
    const CellTest blanked = columns_[static_cast<std::size_t>(column)].blanked;
    return blanked != nullptr && blanked(held) ? std::string_view() : held;
}

std::string_view ListGridModel::heldAt(std::size_t slot, int column) const {
    const auto place = static_cast<std::size_t>(column);
    if (!source_) return place < own_[slot].size() ? std::string_view(own_[slot][place]) : std::string_view();
    if (place < blanked_.size() && blanked_[place].test(slot)) return {};
    if (!written_.empty()) {
        if (const auto it = written_.find(cellKey(slot, column)); it != written_.end()) return it->second;
    }
    if (column < fixedColumns_) return {};
    try {
        return source_->cell(slot, column - fixedColumns_).value_or(std::string_view());
    } catch (...) {
        blind_ = true;
        throw;
    }
}

void ListGridModel::readyRow(std::size_t slot) const {
    if (!rows_.told()) readyRows(rows_.slotsFrom(slot));
}

void ListGridModel::readyRows(std::span<const std::uint32_t> slots) const {
    if (!source_ || source_->holds(slots.front())) return;
    try {
        source_->expect(slots);
    } catch (...) {
        blind_ = true;
        throw;
    }
}

std::string ListGridModel::text(int row, int column) const {
    checkColumn(column);
    if (row == 0) return columns_[static_cast<std::size_t>(column)].title;
    readyRow(slotOf(row));
    return textAt(slotOf(row), column);
}

std::string ListGridModel::shownText(int row, int column) const {
    if (blind_ && !source_->holds(slotOf(row))) return {};
    if (!source_) return text(row, column);
    try {
        return text(row, column);
    } catch (const std::exception& failure) {
        noteFailure(failure);
        return {};
    }
}

void ListGridModel::noteFailure(const std::exception& failure) const { failure_ = failureText(failure); }

std::string ListGridModel::textAt(std::size_t slot, int column) const {
    const std::string_view own = valueAt(slot, column);
    const std::string& format = columns_[static_cast<std::size_t>(column)].format;
    return format.empty() ? std::string(withoutMidnight(own)) : formatNumber(own, format);
}

void ListGridModel::setText(int row, int column, std::string_view text) {
    checkColumn(column);
    const auto place = static_cast<std::size_t>(column);
    if (row == 0) {
        columns_[place].title = text;
        return;
    }
    const std::size_t slot = slotOf(row);
    forgetTexts();
    if (!source_) {
        if (own_[slot].size() <= place) own_[slot].resize(place + 1);
        own_[slot][place] = text;
        return;
    }
    if (blanked_.size() <= place) blanked_.resize(place + 1);
    if (text.empty()) {
        blanked_[place].set(slot);
        if (!written_.empty()) written_.erase(cellKey(slot, column));
        return;
    }
    written_[cellKey(slot, column)] = text;
    blanked_[place].reset(slot);
}

const ListGridModel::Column& ListGridModel::column(int column) const {
    checkColumn(column);
    return columns_[static_cast<std::size_t>(column)];
}

ListGridModel::Column& ListGridModel::column(int column) {
    checkColumn(column);
    return columns_[static_cast<std::size_t>(column)];
}

void ListGridModel::setBlanked(int column, CellTest blanked) {
    CellTest& before = this->column(column).blanked;
    if (before == blanked) return;
    before = blanked;
    forgetTexts();
}

void ListGridModel::setKind(int column, ColumnKind kind) {
    ColumnKind& before = this->column(column).kind;
    if (before != kind) sorted_.reset();
    before = kind;
}

void ListGridModel::setFormat(int column, const std::string& format) {
    std::string& before = this->column(column).format;
    if (before != format) sought_.reset();
    before = format;
}

void ListGridModel::setHidden(int column, bool hidden) {
    bool& before = this->column(column).hidden;
    if (before != hidden) sought_.reset();
    before = hidden;
}

int ListGridModel::currentRow() const {
    return current_ == kNone ? 0 : static_cast<int>(rows_.positionOf(current_)) + 1;
}

void ListGridModel::setCurrentRow(int row) {
    setCurrentOnly(row);
    clearSelection();
    if (row != 0) setSelected(row, true);
}

void ListGridModel::setCurrentOnly(int row) { current_ = row == 0 ? kNone : slotOf(row); }

bool ListGridModel::isSelected(int row) const { return selected_.test(slotOf(row)); }

void ListGridModel::setSelected(int row, bool selected) {
    const std::size_t slot = slotOf(row);
    if (selected_.test(slot) == selected) return;
    sum_.reset();
    if (selected) {
        selected_.set(slot);
        lastSelected_ = slot;
        ++selectedCount_;
    } else {
        selected_.reset(slot);
        --selectedCount_;
    }
}

void ListGridModel::forEachSelected(const RowsDone& done, const std::function<void(int row)>& take) const {
    std::vector<std::uint32_t> slots;
    for (std::size_t position = 0; position < rows_.size(); ++position) {
        const std::size_t slot = rows_.slotAt(position);
        if (selected_.test(slot)) slots.push_back(static_cast<std::uint32_t>(slot));
    }
    for (std::size_t at = 0; at < slots.size(); ++at) {
        const std::size_t position = rows_.positionOf(slots[at]);
        tellStep(done, at);
        readyRows(std::span(slots).subspan(at));
        take(static_cast<int>(position) + 1);
    }
}

void ListGridModel::clearSelection() {
    sum_.reset();
    if (selectedCount_ == 1 && selected_.test(lastSelected_)) {
        selected_.reset(lastSelected_);  // the usual case: no need to go through all words
    } else if (selectedCount_ > 0) {
        selected_.clear();
    }
    selectedCount_ = 0;
}

const Colour* ListGridModel::rowColour(int row) const {
    if (colours_.empty()) return nullptr;
    const auto it = colours_.find(slotOf(row));
    return it == colours_.end() ? nullptr : &it->second;
}

void ListGridModel::setRowColour(int row, const Colour* colour) {
    const std::size_t slot = slotOf(row);
    if (colour) {
        colours_[slot] = *colour;
    } else {
        colours_.erase(slot);
    }
}

std::size_t ListGridModel::slotOf(int row) const {
    if (row < 1 || row >= rowCount()) throw std::out_of_range("no such row: " + std::to_string(row));
    return rows_.slotAt(static_cast<std::size_t>(row) - 1);
}

void ListGridModel::checkColumn(int column) const {
    if (column < 0 || column >= columnCount_) throw std::out_of_range("no such column: " + std::to_string(column));
}

void ListGridModel::setColumnCount(int columns) {
    columnCount_ = columns;
    if (columns_.size() < static_cast<std::size_t>(columns)) columns_.resize(static_cast<std::size_t>(columns));
}

void ListGridModel::dropRows(std::size_t count) {
    rows_.reset(count);
    found_.reset();
    forgetTexts();
    own_.clear();
    written_.clear();
    blanked_.clear();
    colours_.clear();
    for (Column& each : columns_)
        each.blanked = nullptr;
    failure_.reset();
    blind_ = false;
    selected_.clear();
    selectedCount_ = 0;
    current_ = kNone;
}

std::uint64_t ListGridModel::cellKey(std::size_t slot, int column) {
    return (static_cast<std::uint64_t>(slot) << 16) | static_cast<std::uint64_t>(column);
}

}  // namespace orvenmod::platform::model
