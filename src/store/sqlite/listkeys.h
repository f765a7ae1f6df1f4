// The keys of a list in its order.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "store/sqlite/database.h"
#include "store/tsql/keyedlist.h"

namespace orvenmod::store::sqlite {

/// Keys as the text that a query takes them in, "[7,3]", and that bound to its one parameter.
std::string keyList(std::span<const std::int64_t> keys);
void bindKeyList(sqlite3_stmt* statement, const std::string& keys);

/// Runs the query of the keys. `shape` is that of the list's statement. Throws Failure, tsql::Error.
std::vector<std::int64_t> listKeys(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape);

}  // namespace orvenmod::store::sqlite
