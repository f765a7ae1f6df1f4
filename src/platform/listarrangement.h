// How a list grid's rows and columns are arranged for its user: sorted by a column, narrowed to the rows that hold some
// words, the columns in an order of the user's. All row numbers of the grid mean the rows as they are shown.
//
// The user arranges too where the design says so: a click on a heading sorts up, then down, then not at all; a heading
// is dragged; Ctrl+F anywhere in the window opens a line that narrows, Esc in it shows all rows again; Ctrl+C copies
// the selected rows.
#pragma once

#include <string>

#include "platform/event.h"

namespace orvenmod::platform {

enum class SortOrder { told, ascending, descending };

enum class ColumnKind { text, number };

class ListArrangement {
public:
    virtual ~ListArrangement() = default;

    /// Sorts stably: numbers as numbers, texts by the letters of the Chinese, blanks last either way. The current row
    /// and the selected ones stay so wherever they come to stand. One that the user cancels has changed nothing.
    virtual void sort(int column, SortOrder order) = 0;
    /// -1 in the told order.
    virtual int sortedColumn() const = 0;
    virtual SortOrder sortOrder() const = 0;

    /// Shows only the rows that hold every word in some column that is shown, Chinese by its letters too; "" shows all.
    /// A row that goes is no longer selected; where it was the current one, the first shown takes its place.
    virtual void narrow(const std::string& words) = 0;
    virtual std::string narrowing() const = 0;

    /// Sorts and narrows rows that were bound since, which show in the told order until then. The first shown becomes
    /// the current and only selected one. What the user cancels is given up: the told order, all rows.
    virtual void arrange() = 0;

    virtual void setColumnKind(int column, ColumnKind kind) = 0;
    virtual ColumnKind columnKind(int column) const = 0;

    /// Shows a column at a place from 0; those between move by one. Hidden columns have places too.
    virtual void moveColumn(int column, int place) = 0;
    virtual int columnAt(int place) const = 0;

    /// What the line below the list tells: rows shown, of how many, selected, and the sum of the selected rows in the
    /// column the user stands in, where that holds numbers.
    virtual std::string status() const = 0;

    Event<int> headingMenu;  ///< the user asks for the menu of that column's heading
};

}  // namespace orvenmod::platform
