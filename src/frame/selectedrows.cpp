#include "frame/selectedrows.h"

namespace orvenmod {

std::vector<int> selectedRows(const platform::ListGrid& list) {
    std::vector<int> rows;
    for (int row = 1; row < list.rowCount(); ++row) {
        if (list.isSelected(row)) rows.push_back(row);
    }
    return rows;
}

}  // namespace orvenmod
