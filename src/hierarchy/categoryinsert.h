// Stores a new category: takes an id, composes its path and depth from the parent's and writes one row.
#pragma once

#include "hierarchy/categorymove.h"

namespace orvenmod {

/// False where it was refused or failed, which the user has been told. The id is taken before the row is written and
/// outside a transaction: it is lost where the row fails.
bool insertCategory(const CategoryChange& wanted);

}  // namespace orvenmod
