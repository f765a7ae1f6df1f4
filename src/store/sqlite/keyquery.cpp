#include "store/sqlite/keyquery.h"

#include "store/sqlite/binding.h"

namespace orvenmod::store::sqlite {

std::string keyList(std::span<const std::int64_t> keys) {
    std::string list = "[";
    for (const std::int64_t key : keys)
        list.append(list.size() > 1 ? "," : "").append(std::to_string(key));
    return list + "]";
}

void bindKeyList(sqlite3_stmt* statement, const std::string& keys) {
    checkBound(sqlite3_bind_text64(statement, 1, keys.data(), keys.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

}  // namespace orvenmod::store::sqlite
