// The list grid: a heading row 0 and data rows from 1, columns from 0. Either bound to a row source (a column of its
// own stands in front for every fixed column) or filled row by row. A million bound rows cost no copies: cells that
// code writes are kept beside the source.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/control.h"
#include "platform/event.h"
#include "platform/keys.h"
#include "platform/listarrangement.h"
#include "platform/rowsource.h"

namespace orvenmod::platform {

class ListGrid : public Control, public ListArrangement {
public:
    /// Shows the source's rows in their own order: column fixedColumns() + i shows the source's column i. Drops what
    /// was written to cells, what is blanked, row colours and the selection; the first row becomes the current and only
    /// selected one, 0 (none) where there are no rows. Column properties stay.
    virtual void bind(std::shared_ptr<const RowSource> source) = 0;

    /// Rows with the heading, columns with the fixed ones.
    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    /// Cuts an unbound grid back (1 leaves the heading) or adds empty rows.
    virtual void setRowCount(int rows) = 0;
    /// Adds a row of an unbound grid: cells separated by tabs, from column 0.
    virtual void addRow(const std::string& cells) = 0;
    virtual void removeRow(int row) = 0;

    /// The cell as the user sees it: with the column's format applied. Throws where a bound row can't be fetched; where
    /// it is to be painted then, the user is told once and sees blanks until he looks at it again.
    virtual std::string text(int row, int column) const = 0;
    /// The cell's own text, without format. The view lives until the grid is written or bound, or a cell of another row
    /// is read, which painting does too. Throws as text().
    virtual std::string_view value(int row, int column) const = 0;
    virtual void setText(int row, int column, std::string_view text) = 0;

    virtual void setColumnHidden(int column, bool hidden) = 0;
    virtual bool columnHidden(int column) const = 0;
    virtual void setColumnAlignment(int column, int alignment) = 0;  ///< in the units of platform::Alignment
    virtual int columnAlignment(int column) const = 0;
    virtual void setHeaderAlignment(int column, int alignment) = 0;
    /// The cells that are so are blank, for whoever reads, sorts or finds them; null for none.
    virtual void setColumnBlanked(int column, CellTest blanked) = 0;
    virtual void setColumnFormat(int column, const std::string& format) = 0;  ///< such as "#,###.##"
    virtual std::string columnFormat(int column) const = 0;
    virtual void setColumnWidth(int column, int twips) = 0;
    virtual int columnWidth(int column) const = 0;

    /// The current row, 0 for none.
    virtual int currentRow() const = 0;
    /// Makes a row current and the only selected one.
    virtual void setCurrentRow(int row) = 0;
    virtual bool isSelected(int row) const = 0;
    virtual void setSelected(int row, bool selected) = 0;

    /// The text colour of all cells of a row; `nullptr` for the system's own.
    virtual void setRowColour(int row, const Colour* colour) = 0;

    Event<> doubleClick;  ///< on a row, which is current by then; the heading raises nothing
    Event<int> keyDown;
    /// Letters typed into the list. Without a handler they lead to the next row that starts with them.
    Event<std::string> typed;
    /// The row under the mouse is current by then, and by the right button the only selected one.
    Event<MouseButton> mouseDown;
};

}  // namespace orvenmod::platform
