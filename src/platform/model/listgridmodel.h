// What a list grid holds, for every toolkit: the bound source or the rows of its own, what code wrote over them,
// removed rows, selection, colours and column properties. Rows and columns count as in platform::ListGrid: row 0 is the
// heading, and a data row is counted as it is shown. A bound row costs no memory; a written cell costs its text, a
// blanked one a bit.
//
// Rows and columns that aren't throw std::out_of_range.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/design.h"
#include "platform/keys.h"
#include "platform/listarrangement.h"
#include "platform/model/bitset.h"
#include "platform/model/listoutput.h"
#include "platform/model/longwork.h"
#include "platform/model/narrowing.h"
#include "platform/model/shownrows.h"
#include "platform/model/sortkeys.h"
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
        ColumnKind kind = ColumnKind::text;
        CellTest blanked = nullptr;
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
    /// The text of a data row to be painted: once a row could not be fetched, by whomever, each that isn't at hand is
    /// blank, until lookAgain().
    std::string shownText(int row, int column) const;
    /// What kept a row from being shown, once.
    std::optional<std::string> takeFailure() { return std::exchange(failure_, std::nullopt); }
    bool failed() const { return failure_.has_value(); }
    void lookAgain() { blind_ = false; }
    void setText(int row, int column, std::string_view text);

    const Column& column(int column) const;
    Column& column(int column);
    void setBlanked(int column, CellTest blanked);
    void setKind(int column, ColumnKind kind);
    void setFormat(int column, const std::string& format);
    void setHidden(int column, bool hidden);

    int currentRow() const;
    /// Makes a row the current and only selected one; 0 for none.
    void setCurrentRow(int row);
    /// Moves the current row and leaves the selection.
    void setCurrentOnly(int row);
    bool isSelected(int row) const;
    void setSelected(int row, bool selected);
    std::size_t selectedCount() const { return selectedCount_; }
    /// Each selected row as they show, fetched together.
    void forEachSelected(const RowsDone& done, const std::function<void(int row)>& take) const;
    void clearSelection();

    /// The arrangement, as ListArrangement tells.
    void sort(int column, SortOrder order);
    /// Readies the sorting by a column, so that sort() needs no cell.
    void readySort(int column, const RowsDone& done);
    /// What a click on the column's heading does: up, down, back to the told order.
    void sortOn(int column);
    /// Whether rows that are bound are sorted when they are arranged.
    bool sorts() const { return sortOrder_ != SortOrder::told && sortedColumn_ < columnCount_; }
    int sortedColumn() const { return sortOrder_ == SortOrder::told ? -1 : sortedColumn_; }
    SortOrder sortOrder() const { return sortOrder_; }
    void narrow(std::string_view words);
    const std::string& narrowing() const { return narrowing_; }
    void arrange();
    void moveColumn(int column, int place);
    int columnAt(int place) const;
    int placeOf(int column) const;
    /// Readies the narrowing, so that the first key needn't.
    void readyNarrowing(const RowsDone& done = nullptr);
    /// Also those that aren't shown.
    int allRows() const { return static_cast<int>(rows_.slotCount()); }

    /// The column the user stands in.
    int currentColumn() const { return currentColumn_; }
    void setCurrentColumn(int column) { currentColumn_ = column; }
    /// Without the sum where a row can't be fetched, as shownText().
    std::string status() const;

    /// Null for the system's own.
    const Colour* rowColour(int row) const;
    void setRowColour(int row, const Colour* colour);

private:
    static constexpr std::size_t kNone = ShownRows::kNone;

    std::size_t slotOf(int row) const;
    /// Has the source fetch the first of some slots together with those behind it.
    void readyRows(std::span<const std::uint32_t> slots) const;
    /// Likewise of those that show from a slot on.
    void readyRow(std::size_t slot) const;
    std::string_view heldAt(std::size_t slot, int column) const;
    std::string_view valueAt(std::size_t slot, int column) const;
    std::string textAt(std::size_t slot, int column) const;
    SortedSlots sortedBy(int column, const RowsDone& done) const;
    /// Each slot once, in the order in which a source reads its rows fastest; `take` asks for cells of these columns.
    void forEachSlot(std::span<const int> columns, const RowsDone& done,
                     const std::function<void(std::size_t)>& take) const;
    void applySort();
    void applyNarrowing(bool further);
    void dropUnshown();
    void forgetTexts();
    const NumberSum& selectedSum() const;
    std::string sumText() const;
    void noteFailure(const std::exception& failure) const;
    void checkColumn(int column) const;
    void setColumnCount(int columns);
    void dropRows(std::size_t count);
    static std::uint64_t cellKey(std::size_t slot, int column);

    int fixedColumns_;
    int columnCount_ = 0;
    std::vector<Column> columns_;  // never fewer than columnCount_
    std::shared_ptr<const RowSource> source_;
    ShownRows rows_;
    std::vector<std::vector<std::string>> own_;  // by slot, of an unbound grid

    std::unordered_map<std::uint64_t, std::string> written_;  // over the source
    std::vector<BitSet> blanked_;                             // over the source, a set of slots a column
    std::unordered_map<std::size_t, Colour> colours_;         // by slot
    BitSet selected_;                                         // slots
    std::size_t selectedCount_ = 0;
    std::size_t lastSelected_ = kNone;
    std::size_t current_ = kNone;  // slot

    int sortedColumn_ = -1;
    SortOrder sortOrder_ = SortOrder::told;
    std::optional<std::pair<int, SortedSlots>> sorted_;  // by a column
    std::string narrowing_;
    std::optional<BitSet> found_;  // slots; none where the rows aren't narrowed
    std::optional<SoughtTexts> sought_;
    std::vector<int> places_;  // columns by place; empty for the design's order
    int currentColumn_ = -1;
    mutable std::optional<std::pair<int, NumberSum>> sum_;  // of the selected rows in a column
    mutable std::optional<std::string> failure_;
    mutable bool blind_ = false;  // rows that aren't at hand are blank
};

}  // namespace orvenmod::platform::model
