// The keys of a list in its order.
#pragma once

#include "store/sqlite/keyquery.h"
#include "store/tsql/keyedlist.h"

namespace orvenmod::store::sqlite {

/// Runs the query of the keys. `shape` is that of the list's statement. Throws Failure, tsql::Error.
Keys listKeys(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape);

}  // namespace orvenmod::store::sqlite
