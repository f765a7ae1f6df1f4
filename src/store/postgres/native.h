// The client library's objects, owned.
#pragma once

#include <libpq-fe.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::store::postgres {

struct CloseConnection {
    void operator()(PGconn* connection) const { PQfinish(connection); }
};
using NativeConnection = std::unique_ptr<PGconn, CloseConnection>;

struct ClearResult {
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

inline bool isFailure(const PGresult* result) {
    const ExecStatusType status = PQresultStatus(result);
    return status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE;
}

/// A cell's text; empty for null.
inline std::string_view textOf(const PGresult* result, int row, int column) {
    return {PQgetvalue(result, row, column), static_cast<std::size_t>(PQgetlength(result, row, column))};
}

/// Of a cell that is a boolean.
inline bool isTrue(const PGresult* result, int row, int column) { return textOf(result, row, column) == "t"; }

/// A part of a failure's report; empty where it has none.
inline std::string field(const PGresult* result, int code) {
    const char* text = PQresultErrorField(result, code);
    return text == nullptr ? std::string() : text;
}

}  // namespace orvenmod::store::postgres
