#include "store/sqlite/sqlitetableloader.h"

#include <charconv>
#include <optional>

#include "store/sqlite/binding.h"
#include "store/sqlite/rowinsert.h"
#include "store/sqlite/sqliteconnection.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/messages.h"
#include "store/tsql/rowwriter.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Kind;
using tsql::sameName;
using tsql::Type;

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

// A character takes no more bytes in code page 936 than in UTF-8, and is no more than one.
bool fits(std::string_view text, const Type& type) {
    const bool padded = type.kind == Kind::character || type.kind == Kind::nchar;
    return type.isText() && !padded && (type.length <= 0 || text.size() <= static_cast<std::size_t>(type.length));
}

}  // namespace

SqliteTableLoader::SqliteTableLoader(SqliteConnection& connection, std::string_view table,
                                     const std::vector<std::string>& fields)
    : connection_(connection), table_(tsql::tableNamed(connection.database().catalog(), table)) {
    std::vector<std::string> names;
    for (const std::string& field : fields)
        names.push_back(columns_.emplace_back(tsql::columnNamed(table_, field)).name);
    statement_ = connection.database().prepareLasting(insertText(table_.name, names));
}

void SqliteTableLoader::bind(int index, const tsql::ColumnInfo& column, std::string_view value) {
    if (fits(value, column.type)) {
        checkBound(
            sqlite3_bind_text64(statement_.get(), index, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8));
        return;
    }
    if (column.type.isBinary()) {
        checkBound(sqlite3_bind_blob64(statement_.get(), index, value.data(), value.size(), SQLITE_STATIC));
        return;
    }
    if (column.type.kind == Kind::integer || column.type.kind == Kind::bigint) {
        const auto number = wholeNumber(value);
        const bool within = number && (column.type.kind == Kind::bigint || *number == static_cast<int>(*number));
        if (within) {
            sqlite3_bind_int64(statement_.get(), index, *number);
            return;
        }
    }
    bindDatum(statement_.get(), index, tsql::storedValue(value, table_, column));
}

void SqliteTableLoader::addRow(const Recordset& rows, std::size_t row) {
    const ResetStatement reset(statement_.get());
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const int column = static_cast<int>(i);
        const Value value = rows.cell(row, column);
        try {
            if (value) {
                bind(column + 1, columns_[i], *value);
            } else {
                sqlite3_bind_null(statement_.get(), column + 1);
            }
        } catch (const tsql::Error& error) {
            throw RowFailure(tsql::worded(connection_.database().file().language, error), row, column);
        }
    }
    if (sqlite3_step(statement_.get()) != SQLITE_DONE) fail(sqlite3_reset(statement_.get()), rows, row);
}

void SqliteTableLoader::fail(int code, const Recordset& rows, std::size_t row) {
    Database& database = connection_.database();
    if ((code & 0xFF) != SQLITE_CONSTRAINT) database.fail(code);
    int failed = RowFailure::kUnknown;
    int asked = 0;
    const auto valueOf = [&](const std::string& name) {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (!sameName(columns_[i].name, name)) continue;
            failed = ++asked == 1 ? static_cast<int>(i) : RowFailure::kUnknown;
            return std::string(rows.cell(row, static_cast<int>(i)).value_or("NULL"));
        }
        return std::string("NULL");
    };
    const Failure failure = constraintFailure(database.handle(), code, database.file(), "INSERT", valueOf);
    throw RowFailure(failure, row, failed);
}

void SqliteTableLoader::add(const Recordset& rows) {
    connection_.database().runtime().startStatement();
    connection_.storeRow([&] {
        for (std::size_t row = 0; row < rows.rowCount(); ++row)
            addRow(rows, row);
    });
}

}  // namespace orvenmod::store::sqlite
