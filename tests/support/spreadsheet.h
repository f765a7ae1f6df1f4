// Reads a spreadsheet file back with LibreOffice, a reader that isn't ours.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::test {

enum class Reading { values, asShown };

/// The cells of a sheet, which count from 1. Fails the test where the file can't be read.
std::vector<std::vector<std::string>> readSpreadsheet(const std::string& file, Reading reading = Reading::values,
                                                      int sheet = 1);

/// How a cell is shown. What a cell hasn't got is "".
struct CellLook {
    std::string alignment;  ///< "left" ...
    std::string format;     ///< such as "#,##0.00", "@" for texts
    std::string number;     ///< the value of a number
    bool bold = false;
    bool operator==(const CellLook&) const = default;
};

struct SheetLook {
    std::vector<int> widths;  ///< of the columns that aren't hidden, in pixels of the reader
    std::vector<std::vector<CellLook>> rows;
};

/// The first sheet; hidden columns are left out.
SheetLook readLook(const std::string& file);

/// The number formats of the first sheet's cells ("@" for text), "" for an empty cell and one without a format.
std::vector<std::vector<std::string>> readSpreadsheetFormats(const std::string& file);

/// What the cells of a list each offer to be picked.
std::vector<std::vector<std::string>> readSpreadsheetChoices(const std::string& file);

}  // namespace orvenmod::test
