// What a list grid gives away beside its window: the selected rows for the clipboard, and the sum of numbers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/model/longwork.h"

namespace orvenmod::platform::model {

class ListGridModel;

/// The columns that aren't hidden, from the first place on.
std::vector<int> shownColumns(const ListGridModel& list);

/// The selected rows with the headings, in the order and the columns that are shown.
struct CopiedRows {
    std::string text;  ///< cells between tabs, a line a row
    std::string html;  ///< a table that tells a spreadsheet which cells are texts; its numbers are plain
};

/// Both empty where nothing is selected.
CopiedRows copySelectedRows(const ListGridModel& list, const RowsDone& done = nullptr);

/// Adds decimal numbers without losing a digit of those that a list shows.
class NumberSum {
public:
    /// A text that is no number adds nothing.
    void add(std::string_view number);
    std::string text(const std::string& format) const;

private:
    long double sum_ = 0;
    int decimals_ = 0;
};

}  // namespace orvenmod::platform::model
