// A wait for a row that somebody else holds, in words of ours: a server names neither the cause nor the time.
#pragma once

#include <chrono>

#include "store/failure.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

/// By its number; a server of other numbers says it in words.
bool isRowLocked(const Failure& reported);

/// The dialect's words, the cause, what the server says.
Failure rowLocked(const Failure& reported, std::chrono::milliseconds waited, tsql::Language language);

}  // namespace orvenmod::store::odbc
