// What an entry grid holds, for every toolkit: typed cells with text, tag, items, rule and lock. Column first, both
// from 1, as in platform::EntryGrid; row 0 stands for the whole column, and its text is the heading. Rows and columns
// that aren't throw std::out_of_range.
//
// What the user types goes in through startEdit, typed and finishEdit, so that every toolkit refuses the same letters.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

    const Items& items(int column, int row) const;
    /// Keeps the text; the entry of that text is selected.
    void setItems(int column, int row, const Items& items);
    int selectedItem(int column, int row) const;
    /// -1 leaves no selection and no text.
    void selectItem(int column, int row, int item);

    bool columnHidden(int column) const;
    void setColumnHidden(int column, bool hidden);
    int columnWidth(int column) const;
    Alignment columnAlignment(int column) const;
    const std::string& heading(int column) const;

    /// Column and row of the next cell that takes a value, in this row or the next ones; 0, 0 where there is none.
    std::pair<int, int> nextEntry(int column, int row) const;
    /// Whether the user can write text into the cell: shown, not locked, and of a kind that takes text.
    bool takesText(int column, int row) const;
    /// Whether a user in that cell may have typed this far.
    bool mayType(int column, int row, const std::string& text) const;
    /// The same, and writes it where he may.
    bool typed(int column, int row, const std::string& text);
    /// The cell is left: keeps the text in its final form, or puts `before` back where the whole is refused.
    void finishEdit(int column, int row, const std::string& before);

private:
    struct Cell {
        std::string text;
        std::string tag;
        std::optional<CellType> type;
        std::optional<NumberRule> rule;
        std::optional<bool> locked;
        std::shared_ptr<const Items> items;
        int selected = -1;
        bool required = false;
    };
    struct Column {
        std::string title;
        int width;
        Alignment alignment;
        bool hidden;
        bool locked;
        CellType type;
        NumberRule rule;
        std::shared_ptr<const Items> items;
    };

    const Column& column(int column) const;
    Column& column(int column);
    const Cell& cell(int column, int row) const;
    Cell& cell(int column, int row);
    void matchItem(int column, int row);

    std::vector<Column> columns_;
    std::vector<std::vector<Cell>> rows_;
    int activeRow_ = 0;
    int activeColumn_ = 0;
};

}  // namespace orvenmod::platform::model
