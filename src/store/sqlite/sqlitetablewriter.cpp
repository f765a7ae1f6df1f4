#include "store/sqlite/sqlitetablewriter.h"

#include <algorithm>
#include <utility>

#include "store/sqlite/binding.h"
#include "store/sqlite/names.h"
#include "store/sqlite/rowinsert.h"
#include "store/sqlite/sqliteconnection.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/error.h"
#include "store/tsql/messages.h"
#include "store/tsql/values.h"

namespace orvenmod::store::sqlite {

SqliteTableWriter::SqliteTableWriter(SqliteConnection& connection, std::string_view table) : connection_(connection) {
    const tsql::ObjectInfo& object = tableNamed(connection.database(), table);
    table_ = object.name;
    columns_ = object.columns;
}

void SqliteTableWriter::addNew() {
    fields_.clear();
    begun_ = true;
}

SqliteTableWriter::Field& SqliteTableWriter::field(std::string_view name) {
    const tsql::Language language = connection_.database().file().language;
    if (!begun_) throw tsql::worded(language, tsql::kNoRowBegun, {});
    const auto column =
        std::find_if(columns_.begin(), columns_.end(), [&](const auto& c) { return sameName(c.name, name); });
    if (column == columns_.end()) throw tsql::worded(language, tsql::kUnknownColumn, {std::string(name)});
    const auto index = static_cast<std::size_t>(column - columns_.begin());
    const auto known = std::find_if(fields_.begin(), fields_.end(), [&](const Field& f) { return f.column == index; });
    if (known != fields_.end()) return *known = {index, std::nullopt, std::nullopt};
    return fields_.emplace_back(Field{index, std::nullopt, std::nullopt});
}

void SqliteTableWriter::set(std::string_view name, std::string_view text) { field(name).text = std::string(text); }
void SqliteTableWriter::setNull(std::string_view name) { field(name); }
void SqliteTableWriter::setBinary(std::string_view name, std::span<const std::byte> bytes) {
    field(name).bytes = bytes;
}

std::vector<std::string> SqliteTableWriter::fieldNames() const {
    std::vector<std::string> names;
    for (const Field& field : fields_)
        names.push_back(columns_[field.column].name);
    return names;
}

void SqliteTableWriter::bind(sqlite3_stmt* statement) const {
    int index = 0;
    for (const Field& field : fields_) {
        ++index;
        const tsql::ColumnInfo& column = columns_[field.column];
        if (field.bytes) {
            // Contents without a byte have no address, and a null pointer would bind a null.
            if (field.bytes->empty()) {
                sqlite3_bind_zeroblob(statement, index, 0);
            } else {
                sqlite3_bind_blob64(statement, index, field.bytes->data(), field.bytes->size(), SQLITE_STATIC);
            }
            continue;
        }
        tsql::Datum value;
        if (field.text) {
            value.kind = tsql::Datum::Kind::text;
            value.text = *field.text;
        }
        tsql::ConvertMode mode;
        mode.assignment = true;
        mode.table = table_;
        mode.column = column.name;
        bindDatum(statement, index, tsql::convert(value, tsql::textType(tsql::Kind::varchar, -1), column.type, mode));
    }
}

std::string SqliteTableWriter::valueOf(const std::string& column) const {
    for (const Field& field : fields_) {
        if (sameName(columns_[field.column].name, column)) return field.text.value_or("NULL");
    }
    return "NULL";
}

void SqliteTableWriter::store() {
    Database& database = connection_.database();
    std::string text = insertText(table_, fieldNames());
    for (bool again = false;; again = true) {
        if (again || text != preparedText_) {
            statement_ = database.prepareNative(text);
            preparedText_ = text;
        }
        const ResetStatement reset(statement_.get());
        bind(statement_.get());
        if (sqlite3_step(statement_.get()) == SQLITE_DONE) return;
        const int code = sqlite3_reset(statement_.get());
        if ((code & 0xFF) == SQLITE_SCHEMA && !again) continue;
        if ((code & 0xFF) == SQLITE_CONSTRAINT) {
            throw constraintFailure(database.handle(), code, database.file(), "INSERT",
                                    [this](const std::string& column) { return valueOf(column); });
        }
        database.fail(code);
    }
}

void SqliteTableWriter::update() {
    Database& database = connection_.database();
    if (!std::exchange(begun_, false)) throw tsql::worded(database.file().language, tsql::kNoRowBegun, {});
    database.runtime().startStatement();
    try {
        connection_.storeRow([this] { store(); });
    } catch (const tsql::Error& error) {
        throw tsql::worded(database.file().language, error);
    }
}

}  // namespace orvenmod::store::sqlite
