// What the server and the client library report, as the dialect's server would word it.
//
//   OV000  245  varchar, abc, int        what a run-time function failed with: its number, its arguments
//   23505  tblitem.pk                    2627 with the constraint, the table and the new values
//   40P01                                1205
//   42P01, 42703, a plan that no longer fits   the schema has changed: translated again
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "store/failure.h"
#include "store/postgres/native.h"
#include "store/postgres/serveraddress.h"

namespace orvenmod::store::postgres {

/// A failed statement, worded. What refused a row is worded by constraintFailure().
Failure reported(const PGresult* failure, const ServerAddress& address);

/// Whether a translation was made of a schema that has changed since.
bool isSchemaChange(const PGresult* failure);

/// Whether a key, a check or a null refused a row.
bool isConstraint(const PGresult* failure);

/// A row of a COPY that was refused.
struct CopyPlace {
    std::size_t line = 0;  ///< the first is 1
    std::string column;    ///< as the server names it; empty where it tells none
};

/// Out of the context of a failure: "COPY tblitem, line 3, column fnumber: ...", in whatever language.
std::optional<CopyPlace> placeInCopy(const std::string& context, const std::string& table);

/// An attempt to connect that failed.
struct Refusal {
    std::string words;   ///< in the server's language or the library's
    std::string states;  ///< the same with nothing but the states
    std::chrono::steady_clock::duration taken{};
};

/// Its failure.
Failure connectFailure(const PGconn* connection, const ServerAddress& address, const Refusal& refusal);

/// The failure of a new session's settings.
Failure setUpFailure(const PGresult* failure, const ServerAddress& address);

/// Why the server can't be used, where it is too old.
std::optional<Failure> unfitServer(int version, const ServerAddress& address);

/// The library's last message, on one line.
std::string lastWords(const PGconn* connection);

}  // namespace orvenmod::store::postgres
