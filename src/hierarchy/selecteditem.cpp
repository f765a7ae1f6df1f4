#include "hierarchy/selecteditem.h"

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/selectedrows.h"

namespace orvenmod {

bool takeSelectedItem(const platform::ListGrid& list) {
    const std::optional<int> row = lastSelectedRow(list);
    if (row) appState().gCurItemId = toInt32(list.text(*row, kItemIdColumn));
    return row.has_value();
}

}  // namespace orvenmod
