// Says in our own words why a server can't be reached: drivers tell it in several records, each in words of its own.
#pragma once

#include <chrono>
#include <vector>

#include "store/odbc/odbchandle.h"
#include "store/odbc/serverstring.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

/// The failure that the records of a connecting tell of.
Failure connectFailure(const std::vector<Diagnostic>& records, const ServerString& string, std::chrono::seconds limit,
                       tsql::Language language);

/// The failure of one that never came to an end.
Failure serverSilent(const ServerString& string, std::chrono::seconds limit, tsql::Language language);

/// Whether another server may stand in for the one that failed so.
bool isServerAway(const Failure& failure);

}  // namespace orvenmod::store::odbc
