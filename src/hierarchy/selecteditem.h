// The item that a command of the item list acts on.
#pragma once

#include "platform/listgrid.h"

namespace orvenmod {

/// Where a data row of the item list has the item's id; code and name stand behind it.
inline constexpr int kItemIdColumn = 1;

/// Takes the id of the selected row into gCurItemId, of several the last one's; false where none is selected.
bool takeSelectedItem(const platform::ListGrid& list);

}  // namespace orvenmod
