// The rows of a statement.
#pragma once

#include <string>

#include "frame/appstate.h"

namespace orvenmod {

/// Runs it on gConn, which is open. What fails goes to the caller.
inline store::Recordset openRows(const std::string& sql) { return appState().gConn->open(sql); }

}  // namespace orvenmod
