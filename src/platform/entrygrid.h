// The entry grid: typed cells, hidden columns, locks and tags. Rows and columns count from 1, and calls name the column
// first, as this grid always has.
#pragma once

#include <string>

#include "platform/control.h"
#include "platform/event.h"
#include "platform/itemtexts.h"
#include "platform/keys.h"

namespace orvenmod::platform {

/// What a number cell takes: decimal places and limits. A limit that is none leaves the type's own.
struct NumberRule {
    int decimals = 2;
    double minimum = -99999999999.0;
    double maximum = 99999999999.0;
};

class EntryGrid : public Control {
public:
    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    virtual void setRowCount(int rows) = 0;
    virtual void deleteRow(int row) = 0;

    /// 0 where no cell is active.
    virtual int activeRow() const = 0;
    virtual int activeColumn() const = 0;
    virtual void setActiveCell(int column, int row) = 0;

    virtual std::string text(int column, int row) const = 0;
    /// Writes a cell without raising events. A combo selects the entry of that text; without one it shows no
    /// selection and keeps the text. The entry is looked for when somebody asks for it, so that nothing of a list that
    /// is never opened is read. A check box takes "1", "0" or "".
    virtual void setText(int column, int row, const std::string& text) = 0;

    /// `row` 0 sets the whole column, rows added later included. The same holds for the rule and the lock.
    virtual void setCellType(int column, int row, CellType type) = 0;
    virtual CellType cellType(int column, int row) const = 0;
    virtual void setNumberRule(int column, int row, const NumberRule& rule) = 0;
    virtual void setLocked(int column, int row, bool locked) = 0;
    virtual bool locked(int column, int row) const = 0;
    /// Marks the cell, beside its text, as the name or place of a value that must be filled.
    virtual void setRequired(int column, int row, bool required) = 0;
    virtual bool required(int column, int row) const = 0;

    virtual std::string cellTag(int column, int row) const = 0;
    virtual void setCellTag(int column, int row, const std::string& tag) = 0;

    virtual void setItems(int column, int row, const ItemTexts& items) = 0;
    /// What tells entries of the same text apart: an opened list shows it behind them. One for each of the cell's
    /// items, else std::invalid_argument; new items have none.
    virtual void setItemCodes(int column, int row, const ItemTexts& codes) = 0;
    /// A combo of the same row whose items lie beside this one's: of entries that have the written text, the one that
    /// is selected there is meant. 0 for none, then the first.
    virtual void setItemLeader(int column, int row, int leader) = 0;
    /// Whether a combo that its user empties loses its choice; without this it is refused.
    virtual void setClearable(int column, int row, bool clearable) = 0;
    /// -1 for none. Throws what the reading of rows throws.
    virtual int selectedItem(int column, int row) const = 0;
    virtual void selectItem(int column, int row, int item) = 0;  ///< without events

    virtual void setColumnHidden(int column, bool hidden) = 0;
    virtual bool columnHidden(int column) const = 0;
    virtual void setLockedColour(const Colour& colour) = 0;  ///< background of locked cells

    /// The active cell is open (a combo whose entries can't be read is not, and a box tells why) from its user's first
    /// letter until it is left, by key, mouse or a command, or given up
    /// by Escape. Leaving takes over what was typed: a number or day in its plain form, a part of an entry's text as
    /// that entry, raising the events of a pick. What the cell can't take is refused: it stays open with what was
    /// typed, what would have left it doesn't happen, and `refusal` shows beside it. Code that makes another cell
    /// active takes over what it can and gives up the rest.
    virtual bool cellOpen() const = 0;
    virtual std::string openText() const = 0;  ///< what stands in the open cell, "" where none is open
    virtual std::string refusal() const = 0;   ///< "" where the open cell wasn't refused

    /// On a pick the toolkit raises comboSelectionChange, then comboCloseUp, each with column and row. A combo that was
    /// emptied has picked -1.
    Event<int, int> comboSelectionChange;
    Event<int, int, int> comboCloseUp;  ///< and the item, -1 for none
    Event<int, int> editChange;         ///< each letter into a cell of text, and Escape where it puts a text back
    Event<int, int> buttonClick;
    Event<> leftByEnter;  ///< Enter behind the last cell that takes a value
};

}  // namespace orvenmod::platform
