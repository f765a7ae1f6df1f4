// Queries of the keys of rows, and of rows by keys.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "store/sqlite/database.h"

namespace orvenmod::store::sqlite {

using Keys = std::vector<std::int64_t>;

/// The columns of the queries of a tsql::TextOrder.
enum TextColumns { kText, kKey, kMark };

/// Keys as the text that a query takes them in, "[7,3]", and that bound to its one parameter.
std::string keyList(std::span<const std::int64_t> keys);
void bindKeyList(sqlite3_stmt* statement, const std::string& keys);

/// `bind` binds the parameters, `take` gets the statement on each row. Throws Failure, tsql::Error.
template <typename Bind, typename Take>
void runQuery(Database& database, sqlite3_stmt* statement, Bind bind, Take take) {
    const ResetStatement reset(statement);
    database.runtime().startStatement();
    bind(statement);
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement))
        take(statement);
    if (code != SQLITE_DONE) database.fail(code);
}

}  // namespace orvenmod::store::sqlite
