// The export of the item list to a workbook.
#pragma once

#include <functional>

#include "platform/controls.h"
#include "platform/listgrid.h"

namespace orvenmod {

/// Asks for a file and writes the list into it as it stands in the grid: .xlsx by the name's ending, else .xls. False
/// where no file was named. A file that can't be written is passed over, and what stood under that name stays.
/// `breathe` is called now and then while a long list is written.
bool exportToExcel(platform::FileDialog& cd1, const platform::ListGrid& vsf1, const std::function<void()>& breathe);

}  // namespace orvenmod
