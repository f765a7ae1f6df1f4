// Fetching. The recordset wants texts by the declared type of a column, and SQLite has a class for each value instead,
// whatever the column says; another program may have stored anything.
//
//   decimal 3.3000000000000003    3.3      what adding doubles leaves is no digit of the value
//   float 1e10                    10000000000
//   datetime '2026-1-2'           2026-01-02 00:00:00, as this store would have kept it
//   datetime 'soon'               soon: shown as it is, since a list that fails shows nothing
#include "store/sqlite/fetch.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "store/sqlite/binding.h"
#include "store/tsql/dates.h"
#include "store/tsql/decimal.h"
#include "store/tsql/error.h"
#include "store/tsql/resultcolumns.h"
#include "store/tsql/sqlite_decimal.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Kind;
using tsql::Type;

void addInteger(Recordset& rows, std::int64_t value) {
    char buffer[24];
    const char* end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    rows.addText({buffer, static_cast<std::size_t>(end - buffer)});
}

// A decimal without the rest that arithmetic on doubles leaves. A value that another program stored with more digits
// than its column has is no such rest and stays.
double withoutRest(double value, int scale) {
    constexpr double kRest = 1e-13;
    const double rounded = tsql::roundedDouble(value, scale);
    return std::fabs(rounded - value) <= std::fabs(value) * kRest ? rounded : value;
}

// Plain decimal, the shortest that reads back.
void addReal(Recordset& rows, double value, const Type& type) {
    if (type.isDecimal()) value = withoutRest(value, type.scale);
    if (value == 0) value = 0;  // no "-0"
    char buffer[400];
    const char* end =
        type.kind == Kind::real
            ? std::to_chars(buffer, buffer + sizeof buffer, static_cast<float>(value), std::chars_format::fixed).ptr
            : std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr;
    rows.addText({buffer, static_cast<std::size_t>(end - buffer)});
}

// A date that another program stored in a form of its own comes as this store would have it.
void addForeignDate(Recordset& rows, sqlite3_value* value, const Type& type) {
    try {
        const tsql::Datum date = tsql::convert(datumOf(value), type, type);
        rows.addText(date.text);
    } catch (const tsql::Error&) {
        rows.addText(textOf(value));
    }
}

void addDate(Recordset& rows, sqlite3_value* value, const Type& type) {
    if (sqlite3_value_type(value) == SQLITE_TEXT) {
        const std::string_view text = textOf(value);
        // A look at three places tells a text of our own.
        const bool stored = text.size() == 19 || text.size() == 23;
        if (type.kind == Kind::time || (stored && text[4] == '-' && text[10] == ' ')) {
            rows.addText(text);
            return;
        }
    }
    addForeignDate(rows, value, type);
}

void addCell(Recordset& rows, sqlite3_value* value, const Type& type) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            rows.addNull();
            return;
        case SQLITE_TEXT:
            if (type.isDate()) return addDate(rows, value, type);
            if (type.isDecimal()) return rows.addText(tsql::keptDigits(textOf(value)).value_or(textOf(value)));
            return rows.addText(textOf(value));
        case SQLITE_BLOB:
            return rows.addText(bytesOf(value));
        case SQLITE_INTEGER:
            if (type.isDate()) return addForeignDate(rows, value, type);
            return addInteger(rows, sqlite3_value_int64(value));
        default:
            if (type.isDate()) return addForeignDate(rows, value, type);
            return addReal(rows, sqlite3_value_double(value), type);
    }
}

}  // namespace

void fetchRow(sqlite3_stmt* statement, const std::vector<tsql::ResultColumn>& columns, Recordset& rows) {
    const int count = static_cast<int>(columns.size());
    for (int i = 0; i < count; ++i) {
        addCell(rows, sqlite3_column_value(statement, i), columns[static_cast<std::size_t>(i)].type);
    }
    rows.endRow();
}

int fetchRows(sqlite3_stmt* statement, const std::vector<tsql::ResultColumn>& columns, Recordset& rows) {
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement))
        fetchRow(statement, columns, rows);
    return code;
}

int fetchParts(sqlite3_stmt* statement, const std::vector<tsql::ResultColumn>& columns, const Connection::Part& part) {
    Recordset rows = tsql::emptyRecordset(columns);
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        fetchRow(statement, columns, rows);
        if (rows.rowCount() < kRowsPerPart && rows.memory() < kBytesPerPart) continue;
        part(rows);
        rows = tsql::emptyRecordset(columns);
    }
    if (code == SQLITE_DONE && rows.rowCount() > 0) part(rows);
    return code;
}

}  // namespace orvenmod::store::sqlite
