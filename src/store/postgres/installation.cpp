// The version of what is installed stands in the comment of its schema, so that a look costs one short query. Two that
// install at once are kept apart by a lock of their transaction; the second does the same again.
#include "store/postgres/installation.h"

#include <string>

#include "store/postgres/failures.h"
#include "store/postgres/native.h"
#include "store/postgres/runtime/runtime.h"

namespace orvenmod::store::postgres {

namespace {

// Every definition adds one to the number, so that sessions see that what they know of the schema has been overtaken.
constexpr const char* kSchemaVersion =
    "CREATE TABLE IF NOT EXISTS orven.schema_version(number bigint NOT NULL);"
    "INSERT INTO orven.schema_version SELECT 1 WHERE NOT EXISTS (SELECT FROM orven.schema_version);"
    "GRANT USAGE ON SCHEMA orven TO PUBLIC;"
    "GRANT SELECT, UPDATE ON orven.schema_version TO PUBLIC;";

Result run(PGconn* connection, const std::string& text, const ServerAddress& address) {
    Result result(PQexec(connection, text.c_str()));
    if (!isFailure(result.get())) return result;
    throw PQstatus(connection) == CONNECTION_BAD
        ? tsql::worded(address.language, tsql::kServerUnreachable, {address.server, lastWords(connection)})
        : reported(result.get(), address);
}

}  // namespace

void install(PGconn* connection, const ServerAddress& address) {
    const Result known = run(connection, kRuntimeVersionQuery, address);
    if (textOf(known.get(), 0, 0) == runtimeVersion()) return;
    // One text is one transaction.
    run(connection,
        "SET client_min_messages = warning; SET check_function_bodies = off;" + runtimeSql() + kSchemaVersion +
            "RESET ALL",
        address);
}

}  // namespace orvenmod::store::postgres
