#include "store/postgres/postgresstore.h"

#include "store/postgres/postgresconnection.h"
#include "store/postgres/sessionpool.h"

namespace orvenmod::store::postgres {

std::unique_ptr<Connection> PostgresStore::connect(const std::string& connectionString) {
    return std::make_unique<PostgresConnection>(connectionString, takeSession(connectionString, paint_), paint_);
}

void PostgresStore::dropIdleSessions() { postgres::dropIdleSessions(); }

}  // namespace orvenmod::store::postgres
