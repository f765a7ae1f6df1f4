#include "store/sqlite/handlepool.h"

#include "store/handlepool.h"

namespace orvenmod::store::sqlite {

namespace {

HandlePool<Database>& pool() {
    static HandlePool<Database> instance;
    return instance;
}

}  // namespace

std::unique_ptr<Database> takeHandle(const std::string& connectionString) {
    if (auto database = pool().take(connectionString)) return database;
    return std::make_unique<Database>(DatabaseFile::parse(connectionString));
}

void giveHandleBack(const std::string& connectionString, std::unique_ptr<Database> database) noexcept {
    pool().put(connectionString, std::move(database));
}

void dropIdleHandles() { pool().drop(); }

}  // namespace orvenmod::store::sqlite
