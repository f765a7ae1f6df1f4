// The outline of a database, read from SQLite's own tables, and where these keep but a text, from that.
//
//   table t    index "t.constraint.pk.k"   a key over a text: k
//              index "t.i"                 i
//              index "t.orven.fitemid"     the store's own; each store makes it by itself
#include "store/sqlite/sqliteoutline.h"

#include <algorithm>
#include <limits>

#include "store/sqlite/createtext.h"
#include "store/tsql/lexer.h"
#include "store/tsql/runtime.h"
#include "store/tsql/sqlite_decimal.h"
#include "store/tsql/translator.h"
#include "store/tsql/type.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::sameName;

constexpr std::string_view kOwnInfix = ".orven.";

/// A query whose failure is no end of its rows.
class Rows {
public:
    Rows(Database& database, const char* sql, const std::string& argument = {})
        : database_(database), statement_(database.prepareLasting(sql)), argument_(argument) {
        if (sqlite3_bind_parameter_count(statement_.get()) > 0)
            sqlite3_bind_text(statement_.get(), 1, argument_.data(), static_cast<int>(argument_.size()), SQLITE_STATIC);
    }
    bool next() {
        const int code = sqlite3_step(statement_.get());
        if (code == SQLITE_ROW) return true;
        if (code != SQLITE_DONE) database_.fail(sqlite3_reset(statement_.get()));
        return false;
    }
    std::string text(int column) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
        return text == nullptr ? std::string() : std::string(text, bytes(column));
    }
    std::int64_t integer(int column) { return sqlite3_column_int64(statement_.get(), column); }
    bool isNull(int column) { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }

private:
    std::size_t bytes(int column) { return static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column)); }

    Database& database_;
    Statement statement_;
    std::string argument_;
};

/// The dialect's own text where it was kept.
std::string dialectText(const std::string& native) {
    std::string kept = tsql::storedViewText(native);
    return kept.empty() ? native : kept;
}

/// Of a decimal that no double has the digits alone.
std::string defaultText(const std::string& native) {
    const bool quoted = native.size() > 1 && native.front() == '\'';
    const auto digits = quoted ? tsql::keptDigits(std::string_view(native).substr(1, native.size() - 2)) : std::nullopt;
    return digits ? std::string(*digits) : dialectText(native);
}

ColumnOutline* find(TableOutline& table, const std::string& name) {
    const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                    [&](const ColumnOutline& column) { return sameName(column.name, name); });
    return found == table.columns.end() ? nullptr : &*found;
}

class Reader {
public:
    explicit Reader(Database& database) : database_(database) {}

    Outline read() {
        Rows rows(
            database_,
            "SELECT type, name, coalesce(sql, '') FROM sqlite_master WHERE name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
            "AND type <> 'index' ORDER BY rowid");
        while (rows.next()) {
            const std::string type = rows.text(0);
            const std::string name = rows.text(1);
            const std::string sql = rows.text(2);
            if (type == "view") {
                outline_.views.push_back({name, viewText(sql)});
            } else if (type == "table" && !isVirtual(sql)) {
                readTable(name, sql);
            } else {
                outline_.others.push_back((type == "table" ? "virtual table " : type + " ") + name);
            }
        }
        return std::move(outline_);
    }

private:
    static bool isVirtual(const std::string& sql) {
        constexpr std::string_view kVirtual = "CREATE VIRTUAL";
        return sameName(std::string_view(sql).substr(0, kVirtual.size()), kVirtual);
    }

    /// A view that was altered keeps the text that altered it.
    static std::string viewText(const std::string& sql) {
        std::string text = dialectText(sql);
        constexpr std::string_view kAlter = "alter";
        const std::size_t start = text.find_first_not_of(" \t\r\n");
        if (start != std::string::npos && sameName(std::string_view(text).substr(start, kAlter.size()), kAlter))
            text.replace(start, kAlter.size(), "create");
        return text;
    }

    void readTable(const std::string& name, const std::string& sql) {
        TableOutline table;
        table.name = name;
        const bool counted = readIdentity(table, sql);
        readColumns(table, counted);
        readConstraints(table, sql);
        readIndexes(table);
        outline_.tables.push_back(std::move(table));
    }

    bool readIdentity(TableOutline& table, const std::string& sql) {
        Rows counted(database_, "SELECT ?1 LIKE '%autoincrement%'", sql);
        if (!counted.next() || counted.integer(0) == 0) return false;
        Rows last(database_, "SELECT seq FROM sqlite_sequence WHERE name = ?1", table.name);
        if (last.next()) table.nextIdentity = last.integer(0) + 1;
        return true;
    }

    void readColumns(TableOutline& table, bool counted) {
        const tsql::ObjectInfo* object = database_.catalog().find(table.name);
        Rows rows(database_,
                  "SELECT name, \"notnull\", dflt_value, pk, hidden FROM pragma_table_xinfo(?1) WHERE hidden <> 1",
                  table.name);
        for (std::size_t i = 0; rows.next(); ++i) {
            ColumnOutline column;
            column.name = rows.text(0);
            column.nullable = rows.integer(1) == 0 && rows.integer(3) == 0;
            column.identity = counted && rows.integer(3) != 0;
            const tsql::ColumnInfo& info = object->columns[i];
            if (!rows.isNull(2))
                column.defaultValue = info.type.isDecimal() ? defaultText(rows.text(2)) : dialectText(rows.text(2));
            column.type = tsql::parseType(info.declaredType) ? info.declaredType : tsql::printType(info.type);
            if (column.identity) column.type = identityType(table);
            if (rows.integer(4) != 0)
                outline_.others.push_back("expression of column " + table.name + "." + column.name);
            table.columns.push_back(std::move(column));
        }
    }

    /// The row's id is declared so that SQLite counts, whatever the dialect said.
    static std::string identityType(const TableOutline& table) {
        return table.nextIdentity > std::numeric_limits<std::int32_t>::max() ? "bigint" : "int";
    }

    void readConstraints(TableOutline& table, const std::string& sql) {
        for (const ConstraintText& constraint : constraintsOf(sql)) {
            switch (constraint.kind) {
                case ConstraintText::Kind::check:
                    table.checks.push_back({constraint.name, dialectText(constraint.condition)});
                    break;
                case ConstraintText::Kind::foreign:
                    outline_.others.push_back("foreign key " + constraint.name + " of " + table.name);
                    break;
                default:
                    table.keys.push_back(
                        {constraint.name, constraint.kind == ConstraintText::Kind::primary, constraint.columns});
            }
        }
    }

    void readIndexes(TableOutline& table) {
        Rows rows(
            database_,
            "SELECT m.name, m.sql, l.\"unique\", l.partial FROM sqlite_master AS m JOIN pragma_index_list(?1) AS l "
            "ON l.name = m.name WHERE m.type = 'index' AND m.sql IS NOT NULL ORDER BY m.rowid",
            table.name);
        while (rows.next()) {
            const std::string name = rows.text(0);
            const bool known = rows.integer(3) == 0 && readIndex(table, name, rows.text(1), rows.integer(2) != 0);
            if (!known) outline_.others.push_back("index " + name + " of " + table.name);
        }
    }

    /// False for one that the dialect can't declare.
    static bool readIndex(TableOutline& table, const std::string& name, const std::string& sql, bool unique) {
        const auto named = [&](std::string_view infix) { return name.starts_with(table.name + std::string(infix)); };
        if (named(kOwnInfix)) return true;
        IndexOutline index;
        index.unique = unique;
        for (const IndexPart& part : indexPartsOf(sql)) {
            if (part.derived) continue;
            const ColumnOutline* column = find(table, part.key.column);
            if (column == nullptr) return false;
            const auto type = tsql::parseType(column->type);
            const bool carried = name.starts_with(table.name + ".") && type && type->isText() && !part.compared;
            if (carried || !index.included.empty()) {
                index.included.push_back(column->name);
            } else {
                index.columns.push_back({column->name, part.key.descending});
            }
        }
        if (index.columns.empty()) return false;
        for (const std::string_view infix : {tsql::kPrimaryKeyInfix, tsql::kUniqueInfix}) {
            if (!named(infix)) continue;
            addKey(table, {name.substr(table.name.size() + infix.size()), infix == tsql::kPrimaryKeyInfix,
                           std::move(index.columns)});
            return true;
        }
        index.name = name.starts_with(table.name + ".") ? name.substr(table.name.size() + 1) : name;
        table.indexes.push_back(std::move(index));
        return true;
    }

    /// With a primary key of its own a table's identity column, which SQLite can count no other way, is none.
    static void addKey(TableOutline& table, KeyOutline key) {
        if (key.primary) std::erase_if(table.keys, [](const KeyOutline& other) { return other.primary; });
        table.keys.push_back(std::move(key));
    }

    Database& database_;
    Outline outline_;
};

}  // namespace

Outline outlineOf(Database& database) { return Reader(database).read(); }

}  // namespace orvenmod::store::sqlite
