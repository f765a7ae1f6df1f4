// The functions that emitted statements call, as the text that makes them in a database; see tsql/runtime.h.
//
// A connection asks kRuntimeVersionQuery; where the number in the answer is lower than that of runtimeVersion(), it
// takes kRuntimeLock, so that two that install don't meet, asks again and sends runtimeSql(), all in one transaction.
// Functions are replaced in place: views and indexes that call them stay. Older programs use the same database, so that
// functions are only added: none is dropped, and none changes its arguments or what it gives. A change of their text
// raises the number in CMakeLists.txt.
//
// Names, arguments and failures are those of tsql/runtime.h, in the schema orven and on the types that PostgreSQL has
// for them: integers as smallint, integer or bigint, decimals and money as numeric, floats as double precision, dates
// as timestamp, times as time, binary contents as bytea. Integers come back as bigint. A function has one type of
// result, so that conversions are named by it:
//
//   ts_text(v, from, to[, style])       likewise ts_bigint ts_numeric ts_float ts_datetime ts_time ts_binary ts_guid
//   ts_try_text(v, from, to[, style])   and so on: null where it fails; not in a parallel plan
//   ts_store_text(v, from, to, table, column)   ts_store_binary(v bytea, ...)
//                                       what has no 2628 is converted as above
//   ts_like(v, pattern[, escape])       boolean
//   ts_order(t)                         a key of bytes; trailing blanks don't count
//   ts_min(t) ts_max(t)                 aggregates in that order
//   ts_range(v, type)                   v may be a numeric, beyond a bigint
//   ts_fail_as(null::type, number, argument ...)
//                                       ts_fail where another type than a text is expected
//   ts_later(v)                         v; keeps the planner from asking for a constant whose conversion may fail
//
// A failure is SQLSTATE OV000: the number is its message, the arguments are its detail, with chr(31) between. The SQL
// files have the names of tsql/failurenumbers.h in the place of numbers. Of the session's settings, TimeZone tells the
// clock's zone, and extra_float_digits must not be below its default.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::store::postgres {

/// The statements that make or replace the functions. The role needs the right to create in its database, and to be the
/// schema's owner where another version is there.
std::string runtimeSql();

/// "2_5e1f...": the number, and another ending for any other text of the functions.
std::string_view runtimeVersion();

/// The number in a version; 0 where there is none.
int runtimeNumber(std::string_view version);

/// Held until the transaction ends by whoever makes the functions.
inline constexpr const char* kRuntimeLock = "SELECT pg_advisory_xact_lock(hashtextextended('orven.runtime', 0));\n";

/// One row with the version that a database has, null where it has none.
inline constexpr const char* kRuntimeVersionQuery = "SELECT obj_description(to_regnamespace('orven'), 'pg_namespace')";

}  // namespace orvenmod::store::postgres
