// Stores a new category: takes an id, composes its path and depth from the parent's and writes one row.
#pragma once

#include <optional>

#include "hierarchy/categorychange.h"

namespace orvenmod {

/// The refusal, or none where it is stored. Works on gConn, which is open; what fails goes to the caller. The id is
/// taken before the row is written and outside a transaction: it is lost where the row fails.
std::optional<CategoryRefusal> storeCategory(const CategoryChange& wanted);

}  // namespace orvenmod
