#include "store/postgres/postgresstore.h"

#include "store/postgres/handlepool.h"
#include "store/postgres/postgresconnection.h"

namespace orvenmod::store::postgres {

std::unique_ptr<Connection> PostgresStore::connect(const std::string& connectionString) {
    return std::make_unique<PostgresConnection>(connectionString, takeSession(connectionString));
}

void PostgresStore::dropIdleSessions() { postgres::dropIdleSessions(); }

}  // namespace orvenmod::store::postgres
