#include "transfer/sheetrows.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace orvenmod {

namespace {

constexpr unsigned char kLong = 0xFF;
/// Of a cell in its row alone: its bytes are a place.
constexpr CellKind kShared = static_cast<CellKind>('s');
constexpr std::size_t kMostMerged = 1UL << 22;

void append(std::string& row, const SheetCell& cell) {
    row += static_cast<char>(cell.kind);
    const auto length = static_cast<std::uint32_t>(cell.text.size());
    if (length < kLong) {
        row += static_cast<char>(length);
    } else {
        row += static_cast<char>(kLong);
        row.append(reinterpret_cast<const char*>(&length), sizeof(length));
    }
    row += cell.text;
}

/// Takes the first cell off; false at the end.
bool takeCell(std::string_view& row, CellKind& kind, std::string_view& text) {
    if (row.empty()) return false;
    kind = static_cast<CellKind>(row[0]);
    std::uint32_t length = static_cast<unsigned char>(row[1]);
    row.remove_prefix(2);
    if (length == kLong) {
        std::memcpy(&length, row.data(), sizeof(length));
        row.remove_prefix(sizeof(length));
    }
    text = row.substr(0, length);
    row.remove_prefix(length);
    return true;
}

}  // namespace

SheetRows::SheetRows() : shared_(std::vector<store::Column>{{"text"}}), rows_(std::vector<store::Column>{{"row"}}) {}

void SheetRows::flush() {
    std::string row;
    for (const SheetCell& cell : open_)
        append(row, cell);
    rows_.addText(row);
    rows_.endRow();
    open_.clear();
}

void SheetRows::put(std::size_t row, int column, SheetCell cell) {
    columns_ = std::max(columns_, column + 1);
    if (column >= kMostColumns) return;
    if (row < rows_.rowCount()) {
        changed_[row][column] = std::move(cell);
        return;
    }
    while (rows_.rowCount() < row)
        flush();
    const auto at = static_cast<std::size_t>(column);
    if (open_.size() <= at) open_.resize(at + 1);
    open_[at] = std::move(cell);
}

void SheetRows::addShared(std::string_view text) {
    shared_.addText(text);
    shared_.endRow();
}

void SheetRows::putShared(std::size_t row, int column, std::size_t place) {
    const std::string_view text = place < sharedCount() ? shared_.cell(place, 0).value_or("") : "";
    if (text.empty()) return;
    // What comes late lies beside the rows, as itself.
    if (row < rowCount()) return put(row, column, {CellKind::text, std::string(text)});
    const auto bytes = static_cast<std::uint32_t>(place);
    put(row, column, {kShared, std::string(reinterpret_cast<const char*>(&bytes), sizeof(bytes))});
}

std::string_view SheetRows::shared(std::string_view place) const {
    std::uint32_t at = 0;
    std::memcpy(&at, place.data(), sizeof(at));
    return shared_.cell(at, 0).value_or("");
}

void SheetRows::finish() {
    if (!open_.empty()) flush();
}

void SheetRows::markMerged(std::size_t top, int left, std::size_t bottom, int right) {
    for (std::size_t row = top; row <= bottom && row < rowCount(); ++row) {
        for (int at = std::max(left, 0); at <= right && at < columns_ && at < kMostColumns; ++at) {
            const bool first = row == top && at == left;
            if (!first && ++merged_ > kMostMerged) throw std::length_error("merged cells");
            if (!first && cell(row, at).isEmpty()) put(row, at, {CellKind::merged});
        }
    }
}

const SheetCell* SheetRows::changedCell(std::size_t row, int column) const {
    if (changed_.empty()) return nullptr;
    const auto cells = changed_.find(row);
    if (cells == changed_.end()) return nullptr;
    const auto found = cells->second.find(column);
    return found == cells->second.end() ? nullptr : &found->second;
}

SheetCell SheetRows::cell(std::size_t row, int column) const {
    if (const SheetCell* changed = changedCell(row, column)) return *changed;
    std::string_view rest = rows_.cell(row, 0).value_or("");
    CellKind kind = CellKind::empty;
    std::string_view text;
    for (int at = 0; takeCell(rest, kind, text); ++at) {
        if (at != column) continue;
        if (kind == kShared) return {CellKind::text, std::string(shared(text))};
        return {kind, std::string(text)};
    }
    return {};
}

bool SheetRows::isBlank(std::size_t row) const {
    const auto changed = changed_.find(row);
    if (changed != changed_.end()) {
        for (const auto& [column, cell] : changed->second) {
            if (!cell.isEmpty()) return false;
        }
    }
    std::string_view rest = rows_.cell(row, 0).value_or("");
    CellKind kind = CellKind::empty;
    std::string_view text;
    while (takeCell(rest, kind, text)) {
        if (kind != CellKind::empty && kind != CellKind::emptyDate && kind != CellKind::merged) return false;
    }
    return true;
}

}  // namespace orvenmod
