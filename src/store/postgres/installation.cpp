// The version of what is installed stands in the comment of its schema, so that a look costs one short query. Two that
// install at once are kept apart by a lock of their transaction; what the first has made need not be made again.
#include "store/postgres/installation.h"

#include <string>

#include "store/postgres/failures.h"
#include "store/postgres/native.h"
#include "store/postgres/runtime/runtime.h"

namespace orvenmod::store::postgres {

namespace {

// Every definition adds one to the number, so that sessions see that what they know of the schema has been overtaken:
// a change looks at it, and who listens is told.
constexpr const char* kSchemaVersion =
    "CREATE TABLE IF NOT EXISTS orven.schema_version(number bigint NOT NULL);"
    "INSERT INTO orven.schema_version SELECT 1 WHERE NOT EXISTS (SELECT FROM orven.schema_version);"
    "CREATE OR REPLACE FUNCTION orven.tell_schema() RETURNS trigger LANGUAGE plpgsql AS "
    "$$BEGIN PERFORM pg_notify('orven_schema', NEW.number::text); RETURN NULL; END$$;"
    "CREATE OR REPLACE TRIGGER tell_schema AFTER UPDATE ON orven.schema_version "
    "FOR EACH ROW EXECUTE FUNCTION orven.tell_schema();"
    "GRANT USAGE ON SCHEMA orven TO PUBLIC;"
    "GRANT SELECT, UPDATE ON orven.schema_version TO PUBLIC;";

Result run(PGconn* connection, const std::string& text, const ServerAddress& address) {
    Result result(PQexec(connection, text.c_str()));
    if (!isFailure(result.get())) return result;
    throw PQstatus(connection) == CONNECTION_BAD
        ? tsql::worded(address.language, tsql::kServerUnreachable, {address.server, lastWords(connection)})
        : reported(result.get(), address);
}

bool isOutdated(PGconn* connection, const ServerAddress& address) {
    const Result known = run(connection, kRuntimeVersionQuery, address);
    return runtimeNumber(textOf(known.get(), 0, 0)) < runtimeNumber(runtimeVersion());
}

}  // namespace

void install(PGconn* connection, const ServerAddress& address) {
    if (!isOutdated(connection, address)) return;
    run(connection, std::string("BEGIN;") + kRuntimeLock, address);
    if (isOutdated(connection, address)) {
        run(connection,
            "SET LOCAL client_min_messages = warning; SET LOCAL check_function_bodies = off;" + runtimeSql() +
                kSchemaVersion,
            address);
    }
    run(connection, "COMMIT", address);
}

}  // namespace orvenmod::store::postgres
