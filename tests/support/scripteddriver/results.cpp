// The driver's entry points for results.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "support/scripteddriver/handles.h"

using namespace orvenmod::test;

namespace orvenmod::test {

namespace {

// UTF-8 to UTF-16; what a test writes is well formed.
std::u16string wide(const std::string& text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        char32_t code = more == 0 ? lead : lead & (0x3FU >> more);
        for (++i; i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U; ++i)
            code = (code << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
        if (code < 0x10000) {
            result += static_cast<char16_t>(code);
        } else {
            result += static_cast<char16_t>(0xD7C0 + (code >> 10U));
            result += static_cast<char16_t>(0xDC00 + (code & 0x3FFU));
        }
    }
    return result;
}

// A piece of a long value, with `ending` zero bytes behind it.
SQLRETURN putPiece(std::string_view bytes, std::size_t ending, SQLPOINTER buffer, SQLLEN room, SQLLEN* length,
                   std::size_t& offset) {
    if (offset > 0 && offset >= bytes.size()) return SQL_NO_DATA;
    const std::size_t rest = bytes.size() - offset;
    if (length != nullptr) *length = static_cast<SQLLEN>(rest);
    const std::size_t free = static_cast<std::size_t>(room) < ending ? 0 : static_cast<std::size_t>(room) - ending;
    const std::size_t count = std::min(rest, ending == 0 ? free : free - free % ending);
    auto* target = static_cast<char*>(buffer);
    if (target != nullptr && room > 0) {
        std::memcpy(target, bytes.data() + offset, count);
        std::memset(target + count, 0, std::min(ending, static_cast<std::size_t>(room) - count));
    }
    offset += count;
    if (offset >= bytes.size()) offset = std::max<std::size_t>(bytes.size(), 1);
    return count < rest ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

SQL_TIMESTAMP_STRUCT timestamp(const std::string& text) {
    int year = 0;
    unsigned part[5] = {};
    unsigned milliseconds = 0;
    std::sscanf(text.c_str(), "%d-%u-%u %u:%u:%u.%u", &year, &part[0], &part[1], &part[2], &part[3], &part[4],
                &milliseconds);
    const auto small = [](unsigned value) { return static_cast<SQLUSMALLINT>(value); };
    return {
        static_cast<SQLSMALLINT>(year), small(part[0]), small(part[1]), small(part[2]), small(part[3]), small(part[4]),
        milliseconds * 1'000'000};
}

template <typename Value>
SQLRETURN putValue(const Value& value, SQLPOINTER buffer, SQLLEN* length) {
    std::memcpy(buffer, &value, sizeof value);
    if (length != nullptr) *length = sizeof value;
    return SQL_SUCCESS;
}

}  // namespace

SQLRETURN putCell(const std::optional<std::string>& cell, SQLSMALLINT type, SQLPOINTER buffer, SQLLEN room,
                  SQLLEN* length, std::size_t& offset) {
    if (!cell) {
        *length = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    switch (type) {
        case SQL_C_WCHAR: {
            const std::u16string text = wide(*cell);
            return putPiece({reinterpret_cast<const char*>(text.data()), text.size() * 2}, 2, buffer, room, length,
                            offset);
        }
        case SQL_C_BINARY:
            return putPiece(*cell, 0, buffer, room, length, offset);
        case SQL_C_LONG:
        case SQL_C_SLONG:
            return putValue(static_cast<SQLINTEGER>(std::atoi(cell->c_str())), buffer, length);
        case SQL_C_SBIGINT:
            return putValue(static_cast<SQLBIGINT>(std::atoll(cell->c_str())), buffer, length);
        case SQL_C_DOUBLE:
            return putValue(std::strtod(cell->c_str(), nullptr), buffer, length);
        case SQL_C_FLOAT:
            return putValue(std::strtof(cell->c_str(), nullptr), buffer, length);
        case SQL_C_TYPE_TIMESTAMP:
            return putValue(timestamp(*cell), buffer, length);
        default:
            return putPiece(*cell, 1, buffer, room, length, offset);
    }
}

namespace {

// Bytes from one row's value to the next, by columns.
SQLLEN stride(const BoundColumn& column) {
    switch (column.type) {
        case SQL_C_LONG:
        case SQL_C_SLONG:
        case SQL_C_FLOAT:
            return 4;
        case SQL_C_SBIGINT:
        case SQL_C_DOUBLE:
            return 8;
        case SQL_C_TYPE_TIMESTAMP:
            return sizeof(SQL_TIMESTAMP_STRUCT);
        default:
            return column.room;
    }
}

SQLRETURN putBound(StatementHandle& statement, SQLULEN at) {
    const ScriptedRow& row = statement.answer.rows[statement.row + at];
    SQLRETURN worst = SQL_SUCCESS;
    for (std::size_t i = 0; i < std::min(row.size(), statement.bound.size()); ++i) {
        const BoundColumn& column = statement.bound[i];
        if (column.data == nullptr) continue;
        std::size_t offset = 0;
        const SQLRETURN result = putCell(row[i], column.type, column.data + static_cast<SQLLEN>(at) * stride(column),
                                         column.room, column.length + at, offset);
        if (result != SQL_SUCCESS) worst = result;
    }
    return worst;
}

const Answer& current(const StatementHandle& statement) { return statement.answer; }

}  // namespace

SQLRETURN fetch(StatementHandle& statement) {
    const std::size_t left = statement.answer.rows.size() - statement.row;
    const auto count = std::min<SQLULEN>(left, statement.rowsAtOnce);
    if (statement.rowsFetched != nullptr) *statement.rowsFetched = count;
    statement.readColumn = 0;
    if (count == 0) return SQL_NO_DATA;
    SQLRETURN worst = SQL_SUCCESS;
    for (SQLULEN i = 0; i < statement.rowsAtOnce; ++i) {
        const SQLRETURN result = i < count ? putBound(statement, i) : SQL_SUCCESS;
        if (result != SQL_SUCCESS) worst = result;
        if (statement.rowStatus != nullptr)
            statement.rowStatus[i] = static_cast<SQLUSMALLINT>(i < count ? SQL_ROW_SUCCESS : SQL_ROW_NOROW);
    }
    statement.row += count;
    return worst;
}

}  // namespace orvenmod::test

extern "C" {

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count) {
    *count = static_cast<SQLSMALLINT>(current(as<StatementHandle>(handle)).columns.size());
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLRowCount(SQLHSTMT handle, SQLLEN* count) {
    *count = current(as<StatementHandle>(handle)).touched;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeCol(SQLHSTMT handle, SQLUSMALLINT number, SQLCHAR* name, SQLSMALLINT room,
                                 SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                 SQLSMALLINT* nullable) {
    const ScriptedColumn& column =
        current(as<StatementHandle>(handle)).columns.at(static_cast<std::size_t>(number - 1));
    putText(column.name, name, room, length);
    *type = static_cast<SQLSMALLINT>(column.type);
    *size = column.size;
    *digits = static_cast<SQLSMALLINT>(column.digits);
    *nullable = SQL_NULLABLE;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLBindCol(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER data, SQLLEN room,
                             SQLLEN* length) {
    auto& bound = as<StatementHandle>(handle).bound;
    bound.resize(std::max<std::size_t>(bound.size(), number));
    bound[static_cast<std::size_t>(number - 1)] = {type, static_cast<char*>(data), room, length};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle) { return fetch(as<StatementHandle>(handle)); }

SQLRETURN SQL_API SQLFetchScroll(SQLHSTMT handle, SQLSMALLINT, SQLLEN) { return fetch(as<StatementHandle>(handle)); }

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER buffer, SQLLEN room,
                             SQLLEN* length) {
    auto& statement = as<StatementHandle>(handle);
    if (statement.readColumn != number) statement.readBytes = 0;
    statement.readColumn = number;
    const ScriptedRow& row = statement.answer.rows.at(statement.row - 1);
    return putCell(row.at(static_cast<std::size_t>(number - 1)), type, buffer, room, length, statement.readBytes);
}

}  // extern "C"
