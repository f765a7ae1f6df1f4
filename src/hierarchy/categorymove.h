// Stores a change of a category: the category and all below it get new paths, depths and codes, in one transaction.
#pragma once

#include <functional>
#include <optional>

#include "hierarchy/categorychange.h"

namespace orvenmod {

/// Changes the category gCurItemId: the refusal, or none where it is stored. Begins and commits a transaction on gConn,
/// which is open; what fails goes to the caller, with the transaction open. `rowsMoved` is called now and then, behind
/// some rows.
std::optional<CategoryRefusal> storeMove(const CategoryChange& wanted, const std::function<void()>& rowsMoved);

}  // namespace orvenmod
