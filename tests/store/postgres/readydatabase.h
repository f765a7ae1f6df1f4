// A database in which the run-time functions are installed, which takes longer than to copy it.
#pragma once

#include <string>

#include "store/postgres/postgresstore.h"
#include "store/postgres/runtime/runtime.h"
#include "support/postgresserver.h"

namespace orvenmod::store::postgres::test {

class ReadyDatabase : public orvenmod::test::ServerDatabase {
public:
    ReadyDatabase() : ServerDatabase("ready_" + std::string(runtimeVersion()), install) {}

private:
    static void install(const std::string& database) {
        PostgresStore().connect(connectionStringFor(orvenmod::test::PostgresServer::shared(), database));
        PostgresStore::dropIdleSessions();
    }
};

}  // namespace orvenmod::store::postgres::test
