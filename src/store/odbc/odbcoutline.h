// What a database of a server of the dialect holds, by its system views.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

namespace orvenmod::store::odbc {

/// Throws Failure.
Outline outlineOf(Connection& connection);

/// Whether one of the fields of the table counts by itself.
bool hasIdentity(Connection& connection, std::string_view table, const std::vector<std::string>& fields);

}  // namespace orvenmod::store::odbc
