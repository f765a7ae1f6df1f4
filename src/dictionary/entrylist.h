// A list of dictionary entries: rows of id (hidden), code and name below the heading, and the commands that act on the
// current row. Shared by the two windows that show such a list.
#pragma once

#include <cstdint>

#include "platform/listgrid.h"

namespace orvenmod {

class EntryList {
public:
    /// Code and name stand behind it.
    static constexpr int kIdColumn = 0;

    explicit EntryList(platform::ListGrid& vsf1) : vsf1_(vsf1) {}

    /// Reads the entries of a dictionary on gConn, which is open. What fails goes to the caller.
    void read(std::int32_t itemClassId);

    /// Opens the current row for a change; nothing without one.
    void updateRow();
    /// Asks, deletes the current row's entry and marks the row that took its place; nothing without one.
    void deleteRow();

    /// Marks a row as the current and selected one, where there still is such a row.
    void markRow(int row);

private:
    bool hasCurrentRow() const;
    void takeCurrentId() const;

    platform::ListGrid& vsf1_;
};

}  // namespace orvenmod
