// How a list grid's rows and columns are arranged.
#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

#include "platform/model/listgridmodel.h"

namespace orvenmod::platform::model {

void ListGridModel::sort(int column, SortOrder order) {
    checkColumn(column);
    if (order != SortOrder::told)
        readySort(column, nullptr);
    else if (sorted_ && sorted_->first != column)
        sorted_.reset();
    sortedColumn_ = column;
    sortOrder_ = order;
    applySort();
    lookAgain();
}

void ListGridModel::readySort(int column, const RowsDone& done) {
    if (!sorted_ || sorted_->first != column) sorted_.emplace(column, sortedBy(column, done));
}

void ListGridModel::sortOn(int column) {
    if (sortedColumn() != column) return sort(column, SortOrder::ascending);
    sort(column, sortOrder_ == SortOrder::ascending ? SortOrder::descending : SortOrder::told);
}

SortedSlots ListGridModel::sortedBy(int column, const RowsDone& done) const {
    SortKeys keys(this->column(column).kind, rows_.slotCount());
    forEachSlot({&column, 1}, done, [&](std::size_t slot) { keys.set(slot, valueAt(slot, column)); });
    return keys.sorted();
}

void ListGridModel::forEachSlot(std::span<const int> columns, const RowsDone& done,
                                const std::function<void(std::size_t)>& take) const {
    std::size_t taken = 0;
    const auto takeNext = [&](std::size_t slot) {
        tellStep(done, taken++);
        take(slot);
    };
    if (!source_) {
        for (std::size_t slot = 0; slot < rows_.slotCount(); ++slot)
            takeNext(slot);
        return;
    }
    std::vector<int> read;
    for (const int column : columns) {
        if (column >= fixedColumns_) read.push_back(column - fixedColumns_);
    }
    try {
        source_->forEachRow(read, takeNext);
    } catch (const WorkCancelled&) {
        throw;
    } catch (...) {
        blind_ = true;
        throw;
    }
}

void ListGridModel::applySort() {
    if (!sorts()) return rows_.setOrder(std::nullopt);
    readySort(sortedColumn_, nullptr);
    rows_.setOrder(sorted_->second.inOrder(sortOrder_));
}

void ListGridModel::readyNarrowing(const RowsDone& done) {
    if (sought_) return;
    SoughtTexts texts(rows_.slotCount());
    std::vector<int> shown;
    for (int column = 0; column < columnCount_; ++column) {
        if (!columns_[static_cast<std::size_t>(column)].hidden) shown.push_back(column);
    }
    forEachSlot(shown, done, [&](std::size_t slot) {
        texts.beginRow(slot);
        for (const int column : shown)
            texts.addCell(textAt(slot, column));
        texts.endRow(slot);
    });
    sought_ = std::move(texts);
}

void ListGridModel::narrow(std::string_view words) {
    // More of the same words finds nothing that less of them didn't.
    const bool further = sought_ && found_ && words.starts_with(narrowing_);
    if (!words.empty()) readyNarrowing();
    narrowing_ = words;
    applyNarrowing(further);
    dropUnshown();
    lookAgain();
}

void ListGridModel::applyNarrowing(bool further) {
    if (narrowing_.empty()) {
        found_.reset();
        return rows_.setShown(std::nullopt);
    }
    readyNarrowing();
    const std::vector<SoughtWord> words = soughtWords(narrowing_);
    BitSet found;
    for (const std::uint32_t slot : sought_->order()) {
        if (further && !found_->test(slot)) continue;
        const std::u16string_view texts = sought_->row(slot);
        if (std::ranges::all_of(words, [&](const SoughtWord& word) { return word.in(texts); })) found.set(slot);
    }
    found_ = found;
    rows_.setShown(std::move(found));
}

void ListGridModel::dropUnshown() {
    for (std::size_t slot = 0, left = selectedCount_; left > 0 && slot < rows_.slotCount(); ++slot) {
        if (!selected_.test(slot)) continue;
        sum_.reset();
        --left;
        if (rows_.positionOf(slot) != kNone) continue;
        selected_.reset(slot);
        --selectedCount_;
    }
    const bool lost = current_ == kNone || rows_.positionOf(current_) == kNone;
    if (lost) setCurrentRow(rowCount() > 1 ? 1 : 0);
}

void ListGridModel::arrange() {
    applySort();
    applyNarrowing(false);
    setCurrentRow(rowCount() > 1 ? 1 : 0);
}

void ListGridModel::forgetTexts() {
    sorted_.reset();
    sought_.reset();
    sum_.reset();
}

void ListGridModel::moveColumn(int column, int place) {
    checkColumn(column);
    checkColumn(place);
    const int before = placeOf(column);
    if (before == place) return;
    if (places_.size() != static_cast<std::size_t>(columnCount_)) {
        places_.resize(static_cast<std::size_t>(columnCount_));
        std::iota(places_.begin(), places_.end(), 0);
    }
    places_.erase(places_.begin() + before);
    places_.insert(places_.begin() + place, column);
}

int ListGridModel::columnAt(int place) const {
    checkColumn(place);
    return places_.size() == static_cast<std::size_t>(columnCount_) ? places_[static_cast<std::size_t>(place)] : place;
}

int ListGridModel::placeOf(int column) const {
    checkColumn(column);
    if (places_.size() != static_cast<std::size_t>(columnCount_)) return column;
    return static_cast<int>(std::ranges::find(places_, column) - places_.begin());
}

// Kept, since every painting asks for it.
const NumberSum& ListGridModel::selectedSum() const {
    if (sum_ && sum_->first == currentColumn_) return sum_->second;
    NumberSum sum;
    const auto add = [&](std::size_t slot) { sum.add(valueAt(slot, currentColumn_)); };
    // To fetch a row of all its columns takes as long as to walk through some in this one.
    constexpr std::size_t kFew = 16;
    if (selectedCount_ > rows_.slotCount() / kFew) {
        forEachSlot({&currentColumn_, 1}, nullptr, [&](std::size_t slot) {
            if (selected_.test(slot)) add(slot);
        });
    } else {
        forEachSelected(nullptr, [&](int row) { add(slotOf(row)); });
    }
    return sum_.emplace(currentColumn_, sum).second;
}

std::string ListGridModel::sumText() const {
    if (currentColumn_ < 0 || currentColumn_ >= columnCount_ || selectedCount_ == 0) return {};
    const Column& column = columns_[static_cast<std::size_t>(currentColumn_)];
    if (column.hidden || column.kind != ColumnKind::number || blind_) return {};
    try {
        return column.title + "合计 " + selectedSum().text(column.format);
    } catch (const std::exception& failure) {
        noteFailure(failure);
        return {};
    }
}

std::string ListGridModel::status() const {
    const std::size_t shown = rows_.size();
    std::string line = "显示 " + std::to_string(shown) + " 行";
    if (shown != rows_.heldCount()) line += "，共 " + std::to_string(rows_.heldCount()) + " 行";
    line += "，选中 " + std::to_string(selectedCount_) + " 行";
    const std::string sum = sumText();
    return sum.empty() ? line : line + "，" + sum;
}

}  // namespace orvenmod::platform::model
