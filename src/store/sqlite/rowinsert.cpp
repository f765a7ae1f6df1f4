#include "store/sqlite/rowinsert.h"

#include "store/tsql/emitter.h"

namespace orvenmod::store::sqlite {

std::string insertText(const std::string& table, const std::vector<std::string>& columns) {
    if (columns.empty()) return "INSERT INTO " + tsql::quoteName(table) + " DEFAULT VALUES";
    std::string names;
    std::string places;
    for (const std::string& column : columns) {
        names += (names.empty() ? "" : ",") + tsql::quoteName(column);
        places += places.empty() ? "?" : ",?";
    }
    return "INSERT INTO " + tsql::quoteName(table) + "(" + names + ") VALUES(" + places + ")";
}

}  // namespace orvenmod::store::sqlite
