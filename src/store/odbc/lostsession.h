// Why a session has ended, in words of ours: those of drivers are English, and some say "Unknown error".
#pragma once

#include <string>

#include "store/failure.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

/// Whether a failure of that number ends the session.
bool endsSession(int number);

/// The failure for a statement whose session has ended: the server's name, the cause, what the driver says.
Failure lostSession(const std::string& server, const Failure& reported, tsql::Language language);

}  // namespace orvenmod::store::odbc
