// The export of a list to a workbook.
#pragma once

#include <string>

#include "platform/listgrid.h"

namespace orvenmod {

/// Writes every row and column of the list, heading and hidden columns included, as texts to an .xls file. A file that
/// can't be written is passed over: what stood under that name stays.
void exportList(const platform::ListGrid& list, const std::string& path);

}  // namespace orvenmod
