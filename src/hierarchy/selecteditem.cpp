#include "hierarchy/selecteditem.h"

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/selectedrows.h"

namespace orvenmod {

bool takeSelectedItem(const platform::ListGrid& list) {
    const std::vector<int> rows = selectedRows(list);
    for (const int row : rows)
        appState().gCurItemId = toInt32(list.text(row, 1));
    return !rows.empty();
}

}  // namespace orvenmod
