// The rows of a sheet that is brought in: a million of them lie in one arena, a row one text of its cells.
//
//   cell    [kind 1][length 1, or 0xFF and length 4][bytes]
//
// A text that many cells of a workbook share lies once, and its cells hold its place among the shared ones. What comes
// or changes behind its row (a formula's result, a cell that was mended) lies beside the arena.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "store/recordset.h"

namespace orvenmod {

/// What the file holds in a cell. A value that isn't there has a kind of its own where that is worth telling.
enum class CellKind : char {
    empty = ' ',
    emptyDate = 'D',  ///< formatted as a day
    text = 't',
    number = 'n',
    date = 'd',
    uncomputed = 'f',  ///< a formula that was stored without its value
    error = 'e',
    merged = 'm'  ///< part of the merged cell above or beside it
};

struct SheetCell {
    CellKind kind = CellKind::empty;
    std::string text = {};

    bool isEmpty() const { return kind == CellKind::empty || kind == CellKind::emptyDate; }
};

/// The most columns that a sheet may have.
inline constexpr int kMostColumns = 1000;
/// The most rows that a spreadsheet's sheet holds; a text may have more.
inline constexpr std::size_t kMostSheetRows = 1048576;

class SheetRows {
public:
    SheetRows();

    /// A cell of the file, rows and columns from 0. Rows come in their order; what comes late changes its cell. Columns
    /// beyond the most are counted and not kept.
    void put(std::size_t row, int column, SheetCell cell);
    /// A text that cells share, in the order of their places. Before any cell of it.
    void addShared(std::string_view text);
    std::size_t sharedCount() const { return shared_.rowCount(); }
    /// As put(), of the shared text at that place; empty where there is none.
    void putShared(std::size_t row, int column, std::size_t place);
    /// The empty cells of a merged one, but its first, say what they are. Behind all cells. Throws std::length_error
    /// where the merged ones hold more than any sheet that was made by hand.
    void markMerged(std::size_t top, int left, std::size_t bottom, int right);
    /// No more comes.
    void finish();

    std::size_t rowCount() const { return rows_.rowCount(); }
    /// The most that a row has.
    int columnCount() const { return columns_; }
    SheetCell cell(std::size_t row, int column) const;
    bool isBlank(std::size_t row) const;
    /// What the user typed in its place.
    void mend(std::size_t row, int column, const std::string& text) { changed_[row][column] = {CellKind::text, text}; }

private:
    void flush();
    std::string_view shared(std::string_view place) const;
    const SheetCell* changedCell(std::size_t row, int column) const;

    store::Recordset shared_;
    store::Recordset rows_;
    std::vector<SheetCell> open_;
    std::map<std::size_t, std::map<int, SheetCell>> changed_;
    int columns_ = 0;
    std::size_t merged_ = 0;
};

}  // namespace orvenmod
