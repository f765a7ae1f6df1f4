// The keys of a list in its order.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "store/sqlite/database.h"
#include "store/tsql/keyedlist.h"

namespace orvenmod::store::sqlite {

/// Runs the query of the keys. `shape` is that of the list's statement. Throws Failure, tsql::Error.
std::vector<std::int64_t> listKeys(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape);

}  // namespace orvenmod::store::sqlite
