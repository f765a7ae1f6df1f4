#include "store/sqlite/sqlitecatalog.h"

#include <algorithm>
#include <vector>

#include "store/sqlite/binding.h"
#include "store/sqlite/createtext.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/text.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/translator.h"
#include "store/tsql/viewtext.h"

namespace orvenmod::store::sqlite {

namespace {

// A type that another program declared and the dialect does not know is taken by SQLite's own rule of affinity.
tsql::Type declaredType(const std::string& declared) {
    if (const auto type = tsql::parseType(declared)) return *type;
    const std::string name = asciiLower(declared);
    const auto has = [&name](std::string_view part) { return name.find(part) != std::string::npos; };
    if (has("int")) return tsql::typeOf(tsql::Kind::bigint);
    if (has("char") || has("clob") || has("text")) return tsql::textType(tsql::Kind::varchar, -1);
    if (name.empty()) return tsql::textType(tsql::Kind::varchar, -1);
    if (has("blob")) return tsql::textType(tsql::Kind::varbinary, -1);
    return tsql::typeOf(tsql::Kind::floating);
}

// What a statement of the catalog answered. After some failures SQLite has undone the open transaction, so that to go
// on without an answer would store alone what was to be stored with other things. Any other is told by the statement
// that asked, in its own words.
void checkAnswered(sqlite3* database, int code, const DatabaseFile& file) {
    switch (code & 0xFF) {
        case SQLITE_NOMEM:
        case SQLITE_IOERR:
        case SQLITE_FULL:
        case SQLITE_INTERRUPT:
        case SQLITE_BUSY:
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            throw failureOf(database, code, file);
        default:
            break;
    }
}

class Query {
public:
    Query(sqlite3* database, const DatabaseFile& file, const char* text, const std::string& argument)
        : database_(database), file_(file) {
        sqlite3_stmt* statement = nullptr;
        checkAnswered(database, sqlite3_prepare_v2(database, text, -1, &statement, nullptr), file);
        statement_.reset(statement);
        if (statement == nullptr) return;
        checkBound(sqlite3_bind_text64(statement, 1, argument.data(), argument.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    }
    bool next() {
        if (statement_ == nullptr) return false;
        const int code = sqlite3_step(statement_.get());
        checkAnswered(database_, code, file_);
        return code == SQLITE_ROW;
    }
    std::string text(int column) {
        return isNull(column) ? std::string() : std::string(textOf(sqlite3_column_value(statement_.get(), column)));
    }
    int integer(int column) { return sqlite3_column_int(statement_.get(), column); }
    bool isNull(int column) { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }

private:
    sqlite3* database_;
    const DatabaseFile& file_;
    Statement statement_;
};

}  // namespace

void SqliteCatalog::detach() {
    version_.reset();
    objects_.clear();
    database_ = nullptr;
}

const tsql::ObjectInfo* SqliteCatalog::find(std::string_view name) const {
    std::string key = asciiLower(name);
    const auto known = objects_.find(key);
    if (known != objects_.end()) return known->second.get();
    auto object = read(key);
    const tsql::ObjectInfo* result = object.get();
    objects_.emplace(std::move(key), std::move(object));
    return result;
}

bool SqliteCatalog::isKey(const tsql::ObjectInfo& table, std::string_view column) const {
    // A key of the table's own, whatever its form, and an index of the bare column.
    Query query(database_, *file_,
                "SELECT min(name) FROM pragma_table_info(?1) WHERE pk > 0 GROUP BY 'all' HAVING count(*) = 1 "
                "UNION SELECT min(i.name) FROM pragma_index_list(?1) AS l, pragma_index_info(l.name) AS i "
                "WHERE l.\"unique\" AND NOT l.partial GROUP BY l.name HAVING count(*) = 1 AND min(i.name) IS NOT NULL",
                table.name);
    while (query.next()) {
        if (asciiLower(query.text(0)) == asciiLower(column)) return true;
    }
    return false;
}

bool SqliteCatalog::isCarried(const tsql::ObjectInfo& table, std::string_view text, std::string_view column) const {
    Query query(database_, *file_,
                "SELECT m.sql FROM sqlite_master AS m JOIN pragma_index_list(?1) AS l ON l.name = m.name "
                "WHERE m.type = 'index' AND m.sql IS NOT NULL AND NOT l.partial",
                table.name);
    while (query.next()) {
        const std::vector<IndexPart> parts = indexPartsOf(query.text(0));
        const auto& first = parts.front();
        const bool byText = first.compared && !first.key.descending && tsql::sameName(first.key.column, text);
        const bool carries = std::any_of(parts.begin() + 1, parts.end(), [column](const IndexPart& part) {
            return !part.compared && !part.derived && tsql::sameName(part.key.column, column);
        });
        if (byText && carries) return true;
    }
    return false;
}

tsql::ViewDefinition SqliteCatalog::viewDefinition(const tsql::ObjectInfo& view) const {
    Query query(database_, *file_, "SELECT sql FROM sqlite_master WHERE name = ?1 AND type = 'view'", view.name);
    if (!query.next()) return {};
    const std::string kept = query.text(0);
    return {tsql::storedViewText(kept), tsql::storedViewQuery(kept)};
}

void SqliteCatalog::clear() {
    objects_.clear();
    greatestKeyQueries_.clear();
    schemaVersion_ = -1;
}

void SqliteCatalog::refresh() {
    if (!version_) {
        sqlite3_stmt* statement = nullptr;
        const int code = sqlite3_prepare_v2(database_, "PRAGMA schema_version", -1, &statement, nullptr);
        checkAnswered(database_, code, *file_);
        version_.reset(statement);
    }
    const ResetStatement reset(version_.get());
    const int code = sqlite3_step(version_.get());
    checkAnswered(database_, code, *file_);
    const bool known = code == SQLITE_ROW;
    const long long version = known ? sqlite3_column_int64(version_.get(), 0) : -1;
    if (known && version == schemaVersion_) return;
    clear();
    schemaVersion_ = version;
}

std::string& SqliteCatalog::greatestKeyQuery(const std::string& shapeKey) {
    constexpr std::size_t kMost = 1000;
    if (greatestKeyQueries_.size() >= kMost) greatestKeyQueries_.clear();
    return greatestKeyQueries_[shapeKey];
}

std::unique_ptr<tsql::ObjectInfo> SqliteCatalog::read(const std::string& name) const {
    Query query(
        database_, *file_,
        "SELECT name, type, sql FROM sqlite_master WHERE name = ?1 COLLATE NOCASE AND type IN ('table', 'view')", name);
    if (!query.next()) return nullptr;
    auto object = std::make_unique<tsql::ObjectInfo>();
    object->name = query.text(0);
    const bool view = query.text(1) == "view";
    object->kind = view ? tsql::ObjectInfo::Kind::view : tsql::ObjectInfo::Kind::table;
    const std::string viewText = view ? tsql::storedViewText(query.text(2)) : std::string();
    if (!viewText.empty()) {
        object->columns = tsql::viewColumns(viewText, *this);
        return object;
    }
    readColumns(*object);
    if (!view) readIndexes(*object);
    return object;
}

void SqliteCatalog::readColumns(tsql::ObjectInfo& object) const {
    Query query(database_, *file_,
                "SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_xinfo(?1) WHERE hidden <> 1",
                object.name);
    // A key that isn't declared so is no identity column: it takes values as any other.
    Query autoincrement(database_, *file_,
                        "SELECT sql LIKE '%autoincrement%' FROM sqlite_master WHERE type = 'table' AND name = ?1",
                        object.name);
    const bool counted = autoincrement.next() && autoincrement.integer(0) != 0;
    while (query.next()) {
        tsql::ColumnInfo column;
        column.name = query.text(0);
        column.declaredType = query.text(1);
        column.type = declaredType(column.declaredType);
        column.nullable = query.integer(2) == 0;
        column.hasDefault = !query.isNull(3);
        column.identity = counted && query.integer(4) != 0;
        object.columns.push_back(std::move(column));
    }
}

void SqliteCatalog::readIndexes(tsql::ObjectInfo& object) const {
    Query query(database_, *file_, "SELECT name, sql FROM sqlite_master WHERE type = 'index' AND tbl_name = ?1",
                object.name);
    while (query.next()) {
        object.indexes.push_back(query.text(0));
        if (auto codes = codeIndexOf(query.text(1))) object.codeIndexes.push_back(std::move(*codes));
    }
}

}  // namespace orvenmod::store::sqlite
