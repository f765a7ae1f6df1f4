// A constraint that refused a row, as the dialect's server would word it: 2627, 2601, 515, 547.
//
// The server tells its own name of a constraint, a column in lower case and no values. What was declared is asked for,
// and what was to be stored the caller knows:
//
//   23505  tblitem.constraint.pk.a    2627 with PRIMARY KEY, the declared name, tblItem and (5)
//   23505  ix_1                       2601: an index that is no constraint
//   23502  tblitem.fname              515 with fName, tblItem
//   23514, 23503  ck_1                547 with CHECK or FOREIGN KEY, the declared name, tblItem
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
