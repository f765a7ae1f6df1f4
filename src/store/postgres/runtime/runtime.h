// The functions that emitted statements call, as the text that makes them in a database; see tsql/runtime.h.
//
// A connection asks kRuntimeVersionQuery; where the answer isn't runtimeVersion(), it sends runtimeSql() as one simple
// query, which is one transaction and holds a lock, so that two that install don't meet. Functions are replaced in
// place: views that call them stay.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::store::postgres {

/// The statements that make or replace the functions. The role needs the right to create in its database, and to be the
/// schema's owner where another version is there.
std::string runtimeSql();

/// Another for any other text of the functions.
std::string_view runtimeVersion();

/// One row with the version that a database has, null where it has none.
inline constexpr const char* kRuntimeVersionQuery = "SELECT obj_description(to_regnamespace('orven'), 'pg_namespace')";

}  // namespace orvenmod::store::postgres
