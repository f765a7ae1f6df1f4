// What an entry grid holds, for every toolkit: typed cells with text, tag, items, rule and lock. Column first, both
// from 1, as in platform::EntryGrid; row 0 stands for the whole column, and its text is the heading. Rows and columns
// that aren't throw std::out_of_range.
//
// The cell that its user types into is open: from openCell until takeOver takes what was typed, giveUp puts back what
// stood there, or code moves on. The rules are here, so that every toolkit refuses the same.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/date.h"
#include "platform/design.h"
#include "platform/entrygrid.h"

namespace orvenmod::platform::model {

class EntryGridModel {
public:
    using Items = std::vector<std::string>;

    explicit EntryGridModel(const std::vector<GridColumn>& columns);

    int rowCount() const { return static_cast<int>(rows_.size()); }
    int columnCount() const { return static_cast<int>(columns_.size()); }
    void setRowCount(int rows);
    void deleteRow(int row);

    int activeRow() const { return activeRow_; }
    int activeColumn() const { return activeColumn_; }
    /// 0, 0 for none.
    void setActiveCell(int column, int row);

    const std::string& text(int column, int row) const;
    /// Throws std::invalid_argument where a check box is given something else than "1", "0" or "".
    void setText(int column, int row, const std::string& text);
    /// As the user sees it: number cells with the decimals of their rule, currency with two and separators.
    std::string displayText(int column, int row) const;

    CellType cellType(int column, int row) const;
    void setCellType(int column, int row, CellType type);
    const NumberRule& numberRule(int column, int row) const;
    void setNumberRule(int column, int row, const NumberRule& rule);
    bool locked(int column, int row) const;
    void setLocked(int column, int row, bool locked);
    bool required(int column, int row) const;
    void setRequired(int column, int row, bool required);
    const std::string& cellTag(int column, int row) const;
    void setCellTag(int column, int row, const std::string& tag);

    /// The whole list of them, as it is opened.
    const Items& items(int column, int row) const { return itemTexts(column, row).all(); }
    /// Keeps the text; the entry of that text is selected.
    void setItems(int column, int row, const ItemTexts& items);
    int selectedItem(int column, int row) const;
    void setItemLeader(int column, int row, int leader);
    /// -1 leaves no selection and no text.
    void selectItem(int column, int row, int item);

    bool columnHidden(int column) const;
    void setColumnHidden(int column, bool hidden);
    int columnWidth(int column) const;
    Alignment columnAlignment(int column) const;
    const std::string& heading(int column) const;

    /// What an opened list shows for the entry: its text, and its code where another entry has the same text.
    std::vector<std::string> listTexts(int column, int row) const;
    void setItemCodes(int column, int row, const ItemTexts& codes);
    void setClearable(int column, int row, bool clearable);

    /// Whether the user can write text into the cell: shown, not locked, and of a kind that takes text.
    bool takesText(int column, int row) const;
    /// The same for typing and picking: text cells and combos.
    bool takesTyping(int column, int row) const;
    /// The next cell behind the active one that takes a value, in its row or the next ones; 0, 0 for none.
    std::pair<int, int> nextValue() const;

    bool cellOpen() const { return edit_.has_value(); }
    /// Opens the active cell; nothing where it takes no typing or is open. Throws where a combo's entries can't be
    /// read.
    void openCell();
    /// What stands in the open cell, "" where none is open.
    const std::string& openText() const;
    /// Why the open cell wasn't left, "" for no reason.
    const std::string& refusal() const;
    /// The open cell's user typed that far. A combo keeps its choice until it is left. Line breaks become blanks.
    void typed(const std::string& text);
    /// The open combo's user marked an entry of its list.
    void markItem(int item);
    /// The entry to mark in the open combo's list, -1 for none.
    int markedItem() const;

    struct Left {
        std::string refusal = {};        ///< the cell stays open; "" where it was left
        std::optional<int> picked = {};  ///< the choice changed to this one
    };
    /// Leaves the open cell with what was typed, in its final form.
    Left takeOver(const std::optional<Date>& today);
    /// Leaves the open cell as it was opened; true where a text was put back.
    bool giveUp();

private:
    struct Edit {
        std::string before;
        std::string typed;  ///< a combo's; other cells hold theirs
        std::string refusal = {};
        int marked = -1;
    };
    struct Cell {
        std::string text;
        std::string tag;
        std::optional<CellType> type;
        std::optional<NumberRule> rule;
        std::optional<bool> locked;
        std::optional<ItemTexts> items;
        std::optional<ItemTexts> codes;
        int leader = 0;
        mutable std::optional<int> selected = -1;  ///< nothing until somebody asks
        bool required = false;
        bool clearable = false;
    };
    struct Column {
        std::string title;
        int width;
        Alignment alignment;
        bool hidden;
        bool locked;
        CellType type;
        NumberRule rule;
        ItemTexts items;
    };

    const Column& column(int column) const;
    Column& column(int column);
    const Cell& cell(int column, int row) const;
    Cell& cell(int column, int row);
    const ItemTexts& itemTexts(int column, int row) const;
    void matchItem(int column, int row);
    int foundItem(int column, int row) const;
    Cell& activeCell() { return cell(activeColumn_, activeRow_); }
    Left takeOverItem();

    std::vector<Column> columns_;
    std::vector<std::vector<Cell>> rows_;
    int activeRow_ = 0;
    int activeColumn_ = 0;
    std::optional<Edit> edit_;
};

}  // namespace orvenmod::platform::model
