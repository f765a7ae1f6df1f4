// The export of the item list to a workbook.
#pragma once

#include <functional>

#include "platform/controls.h"
#include "platform/listgrid.h"
#include "platform/toolkit.h"

namespace orvenmod {

/// Whether a column of the list, from 0, is of a number type in the store.
using NumberColumns = std::function<bool(int column)>;

/// Asks for a file and writes the list into it as it stands in the grid: .xlsx by the name's ending, else .xls. False
/// where no file was named, or where the user cancelled while a long list was written. A file that can't be written is
/// passed over. Both leave what stood under that name.
/// A column with a number format, and one that `holdsNumbers`, becomes numbers that look as in the list.
bool exportToExcel(platform::Toolkit& toolkit, platform::FileDialog& cd1, const platform::ListGrid& vsf1,
                   const NumberColumns& holdsNumbers = {});

}  // namespace orvenmod
