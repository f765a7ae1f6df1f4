// The saves of the categories' dialog: each opens the store, has the category stored, tells what was refused or failed,
// and closes the store.
#pragma once

#include "hierarchy/categorychange.h"

namespace orvenmod {

/// Stores a new category. False where it was refused or failed.
bool insertCategory(const CategoryChange& wanted);

/// Changes the category gCurItemId; the windows are painted meanwhile. False where it was refused or failed. A failure
/// before the transaction begins is shown, then the rollback fails in its turn: that second failure goes to the caller
/// and leaves the store open.
bool moveCategory(const CategoryChange& wanted);

}  // namespace orvenmod
