// What the library for .xls leaves out: the stored values of a sheet's formulas, and its merged cells.
#pragma once

#include <string>

#include "transfer/sheetrows.h"

namespace orvenmod {

/// Puts the formulas and the merged cells into the rows of that sheet. Nothing where the file's records can't be
/// followed.
void addOldFormulas(const std::string& path, int sheet, SheetRows& rows);

}  // namespace orvenmod
