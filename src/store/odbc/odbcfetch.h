// Copies the rows of an executed query into a recordset, every value as the embedded store would give it.
#pragma once

#include <functional>

#include "store/connection.h"
#include "store/odbc/odbchandle.h"

namespace orvenmod::store::odbc {

/// Throws Failure.
Recordset fetchRows(const OdbcHandle& statement, SQLSMALLINT columns, const std::function<void()>& progress);

/// Likewise, but hands the rows over part by part.
void fetchParts(const OdbcHandle& statement, SQLSMALLINT columns, const std::function<void()>& progress,
                const Connection::Part& part);

/// "12.5000" as "12.5", ".5" as "0.5": a decimal without zeros at its end.
std::string plainDecimal(const std::string& text);

}  // namespace orvenmod::store::odbc
