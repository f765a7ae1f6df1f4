// Writes a table as a spreadsheet file: a heading row and rows of cells, typed and formatted by column. Rows beyond
// what a sheet holds go on in further sheets, each under the same heading. Used by the exports of the lists.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/design.h"

namespace orvenmod::platform {

struct SheetColumn {
    std::string title;
    Alignment alignment = Alignment::general;
    int width = 0;            ///< twips; 0 for the program's own
    std::string format = {};  ///< a spreadsheet's number format; "@" for texts, "" for none
    bool hidden = false;
    bool wholeColumn = false;               ///< .xlsx: the format goes for cells that are still empty
    std::vector<std::string> choices = {};  ///< .xlsx: what may be picked; left out where a cell can't list them all
};

struct SheetCell {
    std::string_view text;  ///< UTF-8; more than 32,767 characters are cut, which is what a cell holds
    bool number = false;    ///< a decimal number: the cell holds its value
};

struct SheetLayout {
    std::string name;  ///< of the first sheet
    std::vector<SheetColumn> columns;
    bool heading = true;  ///< the titles as a bold first row that stays in view
};

class SheetWriter {
public:
    virtual ~SheetWriter() = default;

    /// A row; as many cells as the layout has columns. Throws std::runtime_error where the disk refuses.
    virtual void addRow(const std::vector<SheetCell>& cells) = 0;
    /// Completes the file beside its name, which for a long list takes as long as its rows took; another thread than
    /// that of the rows may do it. Throws std::runtime_error where the disk refuses.
    virtual void complete() = 0;
    /// Puts the completed file under its name. Throws std::runtime_error where that fails. Without it, and after a
    /// failure, no file is left and one that stood there stays.
    virtual void commit() = 0;
    void finish() {
        complete();
        commit();
    }
};

/// Completes the sheet on a thread of its own, which touches nothing but its file, and calls `meanwhile` several times
/// a second until that has ended, and once more then: its last answer. A failure is thrown when the thread has ended.
bool completeMeanwhile(SheetWriter& sheet, const std::function<bool()>& meanwhile);

/// BIFF8 in an OLE2 container, 65,536 rows a sheet.
std::unique_ptr<SheetWriter> newXlsWriter(const std::string& path, const SheetLayout& layout);
/// Office Open XML in constant memory, 1,048,576 rows a sheet.
std::unique_ptr<SheetWriter> newXlsxWriter(const std::string& path, const SheetLayout& layout);

}  // namespace orvenmod::platform
