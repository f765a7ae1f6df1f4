// Reads a spreadsheet file back with LibreOffice, a reader that isn't ours.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::test {

enum class Reading { values, asShown };

/// The cells of the first sheet. Fails the test where the file can't be read.
std::vector<std::vector<std::string>> readSpreadsheet(const std::string& file, Reading reading = Reading::values);

/// The number formats of the first sheet's cells ("@" for text), "" for an empty cell and one without a format.
std::vector<std::vector<std::string>> readSpreadsheetFormats(const std::string& file);

}  // namespace orvenmod::test
