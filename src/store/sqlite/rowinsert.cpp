#include "store/sqlite/rowinsert.h"

#include "store/sqlite/names.h"
#include "store/tsql/error.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::sqlite {

namespace {

std::string quoted(const std::string& name) {
    std::string result = "\"";
    for (const char c : name)
        result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

std::string_view withoutOwner(std::string_view table) {
    constexpr std::string_view kOwner = "dbo.";
    const bool owned = table.size() > kOwner.size() && sameName(table.substr(0, kOwner.size()), kOwner);
    return owned ? table.substr(kOwner.size()) : table;
}

}  // namespace

const tsql::ObjectInfo& tableNamed(Database& database, std::string_view name) {
    const tsql::ObjectInfo* object = database.catalog().find(withoutOwner(name));
    if (object == nullptr || object->kind != tsql::ObjectInfo::Kind::table) {
        throw tsql::Error(tsql::kUnknownObject, {std::string(name)});
    }
    return *object;
}

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
