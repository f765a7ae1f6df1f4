#include "store/odbc/odbctablewriter.h"

#include <strings.h>

#include <algorithm>
#include <utility>

#include "store/odbc/odbcconnection.h"

namespace orvenmod::store::odbc {

namespace {

constexpr std::size_t kPiece = 64UL << 10;

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

bool isBinary(SQLSMALLINT type) { return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY; }

}  // namespace

OdbcTableWriter::OdbcTableWriter(OdbcConnection& connection, std::string_view table)
    : connection_(connection), table_(table) {
    checkTable();
    readColumns();
}

void OdbcTableWriter::checkTable() {
    const OdbcHandle statement = connection_.statement();
    const std::string name = table_.substr(table_.rfind('.') == std::string::npos ? 0 : table_.rfind('.') + 1);
    statement.check(SQLTables(statement.get(), nullptr, 0, nullptr, 0, sqlText(name.c_str()),
                              static_cast<SQLSMALLINT>(name.size()), nullptr, 0));
    if (SQLFetch(statement.get()) == SQL_NO_DATA) throw connection_.failure(tsql::kUnknownObject, {table_});
}

void OdbcTableWriter::readColumns() {
    const OdbcHandle statement = connection_.statement();
    const std::string text = "select * from " + table_ + " where 1=0";
    statement.check(SQLExecDirect(statement.get(), sqlText(text.c_str()), static_cast<SQLINTEGER>(text.size())));
    SQLSMALLINT count = 0;
    statement.check(SQLNumResultCols(statement.get(), &count));
    for (SQLSMALLINT i = 1; i <= count; ++i) {
        SQLCHAR name[512] = {};
        SQLSMALLINT length = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        Column column;
        statement.check(SQLDescribeCol(statement.get(), static_cast<SQLUSMALLINT>(i), name, sizeof name, &length,
                                       &column.type, &column.size, &digits, &nullable));
        column.name = reinterpret_cast<const char*>(name);
        columns_.push_back(std::move(column));
    }
}

void OdbcTableWriter::addNew() {
    fields_.clear();
    begun_ = true;
}

OdbcTableWriter::Field& OdbcTableWriter::field(std::string_view name) {
    if (!begun_) throw connection_.failure(tsql::kNoRowBegun);
    const auto column =
        std::find_if(columns_.begin(), columns_.end(), [&](const Column& c) { return sameName(c.name, name); });
    if (column == columns_.end()) throw connection_.failure(tsql::kUnknownColumn, {std::string(name)});
    const auto index = static_cast<std::size_t>(column - columns_.begin());
    const auto known = std::find_if(fields_.begin(), fields_.end(), [&](const Field& f) { return f.column == index; });
    Field fresh;
    fresh.column = index;
    if (known != fields_.end()) return *known = std::move(fresh);
    return fields_.emplace_back(std::move(fresh));
}

void OdbcTableWriter::set(std::string_view name, std::string_view text) { field(name).text = std::string(text); }
void OdbcTableWriter::setNull(std::string_view name) { field(name); }
void OdbcTableWriter::setBinary(std::string_view name, std::span<const std::byte> bytes) { field(name).bytes = bytes; }

std::string OdbcTableWriter::insertText() const {
    if (fields_.empty()) return "insert into " + table_ + " default values";
    std::string names;
    std::string places;
    for (const Field& field : fields_) {
        names += (names.empty() ? "" : ",") + columns_[field.column].name;
        places += places.empty() ? "?" : ",?";
    }
    return "insert into " + table_ + "(" + names + ") values(" + places + ")";
}

// Texts go as texts, whatever the column: the server converts them by its own rules.
void OdbcTableWriter::bindField(const OdbcHandle& statement, SQLUSMALLINT index, Field& field) {
    const Column& column = columns_[field.column];
    const auto size = std::max<SQLULEN>(column.size, 1);
    if (field.bytes) {
        const SQLSMALLINT type = isBinary(column.type) ? column.type : static_cast<SQLSMALLINT>(SQL_LONGVARBINARY);
        // Nothing needs no stream, and drivers differ in what they make of an empty one.
        static std::byte nothing{};
        const bool empty = field.bytes->empty();
        field.indicator = empty ? 0 : SQL_LEN_DATA_AT_EXEC(static_cast<SQLLEN>(field.bytes->size()));
        SQLPOINTER source = empty ? static_cast<SQLPOINTER>(&nothing) : &field;
        statement.check(SQLBindParameter(statement.get(), index, SQL_PARAM_INPUT, SQL_C_BINARY, type,
                                         std::max<SQLULEN>(field.bytes->size(), 1), 0, source, 0, &field.indicator));
        return;
    }
    const SQLSMALLINT type = isBinary(column.type) ? column.type : static_cast<SQLSMALLINT>(SQL_VARCHAR);
    if (!field.text) {
        field.indicator = SQL_NULL_DATA;
        statement.check(SQLBindParameter(statement.get(), index, SQL_PARAM_INPUT, SQL_C_CHAR, type, size, 0, nullptr, 0,
                                         &field.indicator));
        return;
    }
    constexpr std::size_t kMostVarchar = 8000;
    const bool large = field.text->size() > kMostVarchar;
    field.indicator = static_cast<SQLLEN>(field.text->size());
    statement.check(SQLBindParameter(statement.get(), index, SQL_PARAM_INPUT, SQL_C_CHAR,
                                     large ? static_cast<SQLSMALLINT>(SQL_LONGVARCHAR) : type,
                                     std::max<SQLULEN>(field.text->size(), 1), 0, field.text->data(),
                                     static_cast<SQLLEN>(field.text->size()), &field.indicator));
}

void OdbcTableWriter::bind(const OdbcHandle& statement) {
    SQLUSMALLINT index = 0;
    for (Field& field : fields_)
        bindField(statement, ++index, field);
}

// Sends the contents of each binary field that the driver asks for, piece by piece.
void OdbcTableWriter::stream(const OdbcHandle& statement) {
    for (;;) {
        SQLPOINTER wanted = nullptr;
        const SQLRETURN result = SQLParamData(statement.get(), &wanted);
        if (result != SQL_NEED_DATA) {
            if (result != SQL_NO_DATA) statement.check(result);
            return;
        }
        const std::span<const std::byte> bytes = *static_cast<Field*>(wanted)->bytes;
        for (std::size_t at = 0; at < bytes.size(); at += kPiece) {
            const std::size_t count = std::min(kPiece, bytes.size() - at);
            auto* piece = const_cast<std::byte*>(bytes.data() + at);
            statement.check(SQLPutData(statement.get(), piece, static_cast<SQLLEN>(count)));
        }
    }
}

void OdbcTableWriter::update() {
    const OdbcHandle statement = connection_.statement();
    if (!std::exchange(begun_, false)) throw connection_.failure(tsql::kNoRowBegun);
    bind(statement);
    const std::string text = insertText();
    const SQLRETURN result =
        SQLExecDirect(statement.get(), sqlText(text.c_str()), static_cast<SQLINTEGER>(text.size()));
    if (result == SQL_NEED_DATA) {
        stream(statement);
    } else if (result != SQL_NO_DATA) {
        statement.check(result);
    }
}

}  // namespace orvenmod::store::odbc
