// Copies the rows of a running query into a recordset.
#pragma once

#include <sqlite3.h>

#include <vector>

#include "store/connection.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::sqlite {

/// Adds the row on which the statement stands. It may have more columns than these.
void fetchRow(sqlite3_stmt* statement, const std::vector<tsql::ResultColumn>& columns, Recordset& rows);

/// Steps the statement to its end and adds every row. The last result code: SQLITE_DONE, or what it failed with.
int fetchRows(sqlite3_stmt* statement, const std::vector<tsql::ResultColumn>& columns, Recordset& rows);

/// Likewise, but hands the rows over part by part; what `part` throws goes on.
int fetchParts(sqlite3_stmt* statement, const std::vector<tsql::ResultColumn>& columns, const Connection::Part& part);

}  // namespace orvenmod::store::sqlite
