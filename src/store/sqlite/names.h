// Names of tables and columns: equal without regard to the case of ASCII letters, as SQLite has it.
#pragma once

#include <sqlite3.h>

#include <string_view>

namespace orvenmod::store::sqlite {

inline bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           sqlite3_strnicmp(left.data(), right.data(), static_cast<int>(left.size())) == 0;
}

}  // namespace orvenmod::store::sqlite
