// A constraint that refused a row, as the dialect's server would word it: 2627, 2601, 515, 547.
#pragma once

#include <functional>
#include <string>

#include "store/failure.h"
#include "store/postgres/session.h"

namespace orvenmod::store::postgres {

/// `statement` is "INSERT" or "UPDATE"; `values` gives the text of a column's new value, as far as it is known. Asks
/// the server for what the report leaves out, so that the session must be able to run statements. Throws
/// LostConnection.
Failure constraintFailure(Session& session, const PGresult* failure, const char* statement,
                          const std::function<std::string(const std::string& column)>& values);

}  // namespace orvenmod::store::postgres
