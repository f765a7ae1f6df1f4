// Copies the rows of an executed query into a recordset, every value as the embedded store would give it.
#pragma once

#include <string>
#include <string_view>

#include "store/odbc/odbcwork.h"
#include "store/recordset.h"

namespace orvenmod::store::odbc {

/// Of the work's statement, which stands on a result of that many columns. Throws Failure.
Recordset fetchRows(const OdbcWork& work, SQLSMALLINT columns);

/// "12.5000" as "12.5", ".5" as "0.5": a decimal without zeros at its end. `room` holds what isn't a part of the text.
std::string_view plainDecimal(std::string_view text, std::string& room);

}  // namespace orvenmod::store::odbc
