// What the library for .xls doesn't tell of a sheet: the stored values of its formulas, and its merged cells.
#pragma once

#include <string>

#include "transfer/sheetrows.h"

namespace orvenmod {

/// Puts them into the rows of that sheet. Nothing where the file's records can't be followed.
void addOldFormulas(const std::string& path, int sheet, SheetRows& rows);

}  // namespace orvenmod
