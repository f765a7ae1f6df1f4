// The selected rows of a list. A command that acts on one row alone takes the last.
#pragma once

#include <optional>

#include "platform/listgrid.h"

namespace orvenmod {

/// The last of the selected data rows; none where none is selected.
std::optional<int> lastSelectedRow(const platform::ListGrid& list);

/// What a picker gives back: the last selected row's id, code and name, of columns that stand side by side from
/// `idColumn` on, into gRetItemId, gRetNumber and gRetName. Nothing where none is selected.
void returnLastSelected(const platform::ListGrid& list, int idColumn);

}  // namespace orvenmod
