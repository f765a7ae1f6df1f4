#include "store/sqlite/rowinsert.h"

namespace orvenmod::store::sqlite {

namespace {

std::string quoted(const std::string& name) {
    std::string result = "\"";
    for (const char c : name)
        result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

}  // namespace

std::string insertText(const std::string& table, const std::vector<std::string>& columns) {
    if (columns.empty()) return "INSERT INTO " + quoted(table) + " DEFAULT VALUES";
    std::string names;
    std::string places;
    for (const std::string& column : columns) {
        names += (names.empty() ? "" : ",") + quoted(column);
        places += places.empty() ? "?" : ",?";
    }
    return "INSERT INTO " + quoted(table) + "(" + names + ") VALUES(" + places + ")";
}

}  // namespace orvenmod::store::sqlite
