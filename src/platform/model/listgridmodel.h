// What a list grid holds, for every toolkit: the bound source or the rows of its own, what code wrote over them,
// removed rows, selection, colours and column properties. Rows and columns count as in platform::ListGrid: row 0 is the
// heading. A bound row costs no memory; a written cell costs its text, a blanked one a bit.
//
// Rows and columns that aren't throw std::out_of_range.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/design.h"
#include "platform/keys.h"
#include "platform/model/bitset.h"
#include "platform/model/rowindex.h"
#include "platform/rowsource.h"

namespace orvenmod::platform::model {

class ListGridModel {
public:
    struct Column {
        std::string title;
        int width = 900;
        int alignment = static_cast<int>(Alignment::left);
        int headerAlignment = static_cast<int>(Alignment::centre);
        bool hidden = false;
        std::string format;
    };

    ListGridModel(const std::vector<GridColumn>& columns, int fixedColumns);

    /// The first row becomes the current and only selected one.
    void bind(std::shared_ptr<const RowSource> source);
    bool bound() const { return source_ != nullptr; }
    int fixedColumns() const { return fixedColumns_; }
    int rowCount() const { return static_cast<int>(rows_.size()) + 1; }
    int columnCount() const { return columnCount_; }
    /// 1 leaves the heading and, in a bound grid, lets the source go. Otherwise std::logic_error where the grid is
    /// bound.
    void setRowCount(int rows);
    void addRow(std::string_view cells);
    /// The row that takes the place of a removed current row becomes current, else the one above, else none.
    void removeRow(int row);

    std::string_view value(int row, int column) const;
    std::string text(int row, int column) const;
    void setText(int row, int column, std::string_view text);

    const Column& column(int column) const;
    Column& column(int column);

    int currentRow() const;
    /// Makes a row the current and only selected one; 0 for none.
    void setCurrentRow(int row);
    /// Moves the current row and leaves the selection.
    void setCurrentOnly(int row);
    bool isSelected(int row) const;
    void setSelected(int row, bool selected);
    std::size_t selectedCount() const { return selectedCount_; }
    void clearSelection();

    /// Null for the system's own.
    const Colour* rowColour(int row) const;
    void setRowColour(int row, const Colour* colour);

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    std::size_t slotOf(int row) const;
    void checkColumn(int column) const;
    void setColumnCount(int columns);
    void dropRows(std::size_t count);
    static std::uint64_t cellKey(std::size_t slot, int column);

    int fixedColumns_;
    int columnCount_ = 0;
    std::vector<Column> columns_;  // never fewer than columnCount_
    std::shared_ptr<const RowSource> source_;
    RowIndex rows_;
    std::vector<std::vector<std::string>> own_;  // by slot, of an unbound grid

    std::unordered_map<std::uint64_t, std::string> written_;  // over the source
    std::vector<BitSet> blanked_;                             // over the source, a set of slots a column
    std::unordered_map<std::size_t, Colour> colours_;         // by slot
    BitSet selected_;                                         // slots
    std::size_t selectedCount_ = 0;
    std::size_t lastSelected_ = kNone;
    std::size_t current_ = kNone;  // slot
};

}  // namespace orvenmod::platform::model
