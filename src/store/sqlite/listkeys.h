// The keys of a list in its order.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "store/sqlite/keyquery.h"
#include "store/tsql/keyedlist.h"

namespace orvenmod::store::sqlite {

/// The list of a query that is of the kind, over a table of more rows than a small one has. `shape` is the query's.
/// Throws Failure, tsql::Error.
std::optional<tsql::KeyedList> longList(Database& database, std::string_view sql, const tsql::Shape& shape,
                                        std::int64_t smallTable);

/// Runs the query of the keys. `shape` is that of the list's statement. Throws Failure, tsql::Error.
Keys listKeys(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape);

}  // namespace orvenmod::store::sqlite
