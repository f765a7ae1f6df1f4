#include "store/sqlite/sqlitestore.h"

#include "store/sqlite/handlepool.h"
#include "store/sqlite/sqliteconnection.h"

namespace orvenmod::store::sqlite {

std::unique_ptr<Connection> SqliteStore::connect(const std::string& connectionString) {
    return std::make_unique<SqliteConnection>(connectionString, takeHandle(connectionString));
}

void SqliteStore::dropIdleHandles() { sqlite::dropIdleHandles(); }

}  // namespace orvenmod::store::sqlite
