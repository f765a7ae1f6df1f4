// What the library for .xls leaves out: the stored values of a sheet's formulas, its merged cells, and whether the
// records hold what they tell, beyond which it would read.
#pragma once

#include <string>

#include "transfer/sheetrows.h"

namespace orvenmod {

/// Whether each record of the workbook lies within its stream, and each text within its record.
bool recordsHold(const std::string& path);

/// Puts the formulas and the merged cells into the rows of that sheet. Nothing where the file's records can't be
/// followed.
void addOldFormulas(const std::string& path, int sheet, SheetRows& rows);

}  // namespace orvenmod
