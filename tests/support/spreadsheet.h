// Reads a spreadsheet file back with LibreOffice, a reader that isn't ours.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::test {

enum class Reading { values, asShown };

/// The cells of the first sheet. Fails the test where the file can't be read.
std::vector<std::vector<std::string>> readSpreadsheet(const std::string& file, Reading reading = Reading::values);

}  // namespace orvenmod::test
