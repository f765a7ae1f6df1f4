#include "frame/selectedrows.h"

#include "frame/appstate.h"

namespace orvenmod {

std::optional<int> lastSelectedRow(const platform::ListGrid& list) {
    for (int row = list.rowCount() - 1; row >= 1; --row) {
        if (list.isSelected(row)) return row;
    }
    return std::nullopt;
}

void returnLastSelected(const platform::ListGrid& list, int idColumn) {
    const std::optional<int> row = lastSelectedRow(list);
    if (!row) return;
    AppState& state = appState();
    state.gRetItemId = list.text(*row, idColumn);
    state.gRetNumber = list.text(*row, idColumn + 1);
    state.gRetName = list.text(*row, idColumn + 2);
}

}  // namespace orvenmod
