// Views in an order in which they can be made: each behind those that it names. A store may tell them in another, and
// one that is altered may read a younger one. Where a failed statement ends the transaction, none can be tried twice.
//
//   create view vAll as select * from vPart    create view vPart as select * from t      vPart, vAll
#pragma once

#include <vector>

#include "store/outline.h"

namespace orvenmod::store {

/// Those that name none of the others keep their order.
std::vector<ViewOutline> inOrderOfMaking(const std::vector<ViewOutline>& views);

}  // namespace orvenmod::store
