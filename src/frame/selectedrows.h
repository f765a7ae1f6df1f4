// The selected rows of a list.
#pragma once

#include <vector>

#include "platform/listgrid.h"

namespace orvenmod {

/// The data rows that are selected, from the top. A command that acts on one row alone takes the last.
std::vector<int> selectedRows(const platform::ListGrid& list);

}  // namespace orvenmod
