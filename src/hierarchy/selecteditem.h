// The item that a command of the item list acts on.
#pragma once

#include "platform/listgrid.h"

namespace orvenmod {

/// Takes the id of the selected row into gCurItemId, of several the last one's; false where none is selected. Column 1
/// of a data row is the id.
bool takeSelectedItem(const platform::ListGrid& list);

}  // namespace orvenmod
