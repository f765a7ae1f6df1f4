// A cell that is asked for by itself costs three times what it costs to copy it: most of that is the driver manager's
// way to the driver. So the columns are bound, and the driver fills a block of rows a call:
//
//   column 1   [row 0][row 1] ... [row n-1]   lengths [ ][ ] ... [ ]
//   column 2   [row 0][row 1] ... [row n-1]   lengths [ ][ ] ... [ ]
//
// A column without a size (photos, long texts) has no place in such a block. A result with one is read cell by cell.
#include "store/odbc/odbcfetch.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "store/connection.h"

namespace orvenmod::store::odbc {

namespace {

// The server's own types, beyond the standard's.
constexpr SQLSMALLINT kServerTime = -154;

// A block beyond it leaves the processor's cache.
constexpr std::size_t kBlockBytes = 64UL << 10;
constexpr std::size_t kMostRows = 512;
// Characters, or bytes, of the longest value that stands in a block.
constexpr std::size_t kLongest = 4000;
// Bytes of UTF-8 that a character of a code page, or a half of a surrogate pair, takes at most.
constexpr std::size_t kCharacterBytes = 3;
constexpr std::size_t kFirstPiece = 8192;

ColumnType columnType(SQLSMALLINT type) {
    switch (type) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
            return ColumnType::integer;
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            return ColumnType::decimal;
        case SQL_REAL:
        case SQL_FLOAT:
        case SQL_DOUBLE:
            return ColumnType::real;
        case SQL_TYPE_DATE:
        case SQL_TYPE_TIMESTAMP:
        case SQL_TYPE_TIME:
        case kServerTime:
            return ColumnType::date;
        case SQL_BINARY:
        case SQL_VARBINARY:
        case SQL_LONGVARBINARY:
            return ColumnType::binary;
        default:
            return ColumnType::text;
    }
}

std::string_view printed(char (&buffer)[400], const std::to_chars_result& result) {
    return {buffer, static_cast<std::size_t>(result.ptr - buffer)};
}

template <typename Number>
std::string_view number(char (&buffer)[400], const char* value) {
    Number plain{};
    std::memcpy(&plain, value, sizeof plain);
    if (plain == 0) return "0";  // no "-0"
    if constexpr (std::is_integral_v<Number>) {
        return printed(buffer, std::to_chars(buffer, buffer + sizeof buffer, plain));
    } else {
        return printed(buffer, std::to_chars(buffer, buffer + sizeof buffer, plain, std::chars_format::fixed));
    }
}

std::string_view date(char (&buffer)[400], const char* value) {
    SQL_TIMESTAMP_STRUCT at{};
    std::memcpy(&at, value, sizeof at);
    const unsigned milliseconds = at.fraction / 1'000'000;
    const char* form = milliseconds == 0 ? "%04d-%02d-%02d %02d:%02d:%02d" : "%04d-%02d-%02d %02d:%02d:%02d.%03u";
    const int size = std::snprintf(buffer, sizeof buffer, form, at.year, at.month, at.day, at.hour, at.minute,
                                   at.second, milliseconds);
    return {buffer, static_cast<std::size_t>(size)};
}

// 03:04:05.5000000 as 03:04:05.500: the form of a date's time.
std::string_view time(std::string_view text, std::string& room) {
    constexpr std::size_t kWholeSeconds = sizeof("00:00:00") - 1;
    constexpr std::size_t kMilliseconds = sizeof(".000") - 1;
    if (text.size() <= kWholeSeconds || text[kWholeSeconds] != '.') return text;
    room.assign(text, 0, kWholeSeconds + kMilliseconds);
    room.resize(kWholeSeconds + kMilliseconds, '0');
    return room.ends_with(".000") ? text.substr(0, kWholeSeconds) : std::string_view(room);
}

}  // namespace

OdbcFetch::Form OdbcFetch::formOf(SQLSMALLINT type, SQLULEN size) {
    switch (columnType(type)) {
        case ColumnType::integer:
            return {SQL_C_SBIGINT, sizeof(std::int64_t)};
        case ColumnType::real:
            // By the column's own precision: a real as a double shows digits that it doesn't have.
            return type == SQL_REAL ? Form{SQL_C_FLOAT, sizeof(float)} : Form{SQL_C_DOUBLE, sizeof(double)};
        case ColumnType::date:
            if (type != SQL_TYPE_DATE && type != SQL_TYPE_TIMESTAMP) return {SQL_C_CHAR, 32};
            return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
        case ColumnType::decimal:
            return {SQL_C_CHAR, 64};
        case ColumnType::binary:
            return {SQL_C_BINARY, size > kLongest ? 0 : size};
        case ColumnType::text:
            break;
    }
    return {SQL_C_CHAR, size == 0 || size > kLongest ? 0 : size * kCharacterBytes + 1};
}

OdbcFetch::OdbcFetch(const OdbcWork& work, SQLSMALLINT columns) : work_(work), statement_(work.statement().get()) {
    for (SQLSMALLINT i = 1; i <= columns; ++i)
        columns_.push_back(describe(static_cast<SQLUSMALLINT>(i)));
    if (std::all_of(cells_.begin(), cells_.end(), [](const Cell& c) { return c.form.bytes > 0; })) {
        bind();
    } else {
        enlarge(0, kFirstPiece);
    }
}

Column OdbcFetch::describe(SQLUSMALLINT index) {
    SQLCHAR name[512] = {};
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    work_.check([&] {
        return SQLDescribeCol(statement_, index, name, sizeof name, &length, &type, &size, &digits, &nullable);
    });
    Cell& cell = cells_.emplace_back();
    cell.type = columnType(type);
    cell.form = formOf(type, size);
    return {reinterpret_cast<const char*>(name), cell.type};
}

Recordset OdbcFetch::next(Until until) {
    rows_ = Recordset(columns_);
    const std::size_t step = std::max<std::size_t>(blockRows_, 1);
    while (!atEnd_ && (until == Until::end || !isFull(step))) {
        if (blockRows_ > 0) {
            fetchBlock();
        } else {
            fetchRow();
        }
    }
    return std::move(rows_);
}

bool OdbcFetch::isFull(std::size_t more) const {
    return rows_.rowCount() > 0 && (rows_.rowCount() + more > kRowsPerPart || rows_.memory() >= kBytesPerPart);
}

void OdbcFetch::bind() {
    std::size_t rowBytes = 0;
    for (const Cell& cell : cells_)
        rowBytes += cell.form.bytes + sizeof(SQLLEN);
    blockRows_ = std::clamp<std::size_t>(kBlockBytes / rowBytes, 1, kMostRows);
    status_ = std::make_unique_for_overwrite<SQLUSMALLINT[]>(blockRows_);
    setAttribute(SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(blockRows_));
    setAttribute(SQL_ATTR_ROWS_FETCHED_PTR, &count_);
    setAttribute(SQL_ATTR_ROW_STATUS_PTR, status_.get());
    SQLUSMALLINT index = 0;
    for (Cell& cell : cells_) {
        cell.values = std::make_unique_for_overwrite<char[]>(cell.form.bytes * blockRows_);
        cell.lengths = std::make_unique_for_overwrite<SQLLEN[]>(blockRows_);
        work_.statement().check(SQLBindCol(statement_, ++index, cell.form.type, cell.values.get(),
                                           static_cast<SQLLEN>(cell.form.bytes), cell.lengths.get()));
    }
}

// What is bound goes; the statement may have further results.
void OdbcFetch::unbind() {
    SQLFreeStmt(statement_, SQL_UNBIND);
    setAttribute(SQL_ATTR_ROWS_FETCHED_PTR, nullptr);
    setAttribute(SQL_ATTR_ROW_STATUS_PTR, nullptr);
}

void OdbcFetch::setAttribute(SQLINTEGER attribute, SQLPOINTER value) {
    work_.statement().check(SQLSetStmtAttr(statement_, attribute, value, 0));
}

void OdbcFetch::fetchBlock() {
    const SQLRETURN result = work_.await([&] { return SQLFetch(statement_); });
    if (result == SQL_NO_DATA) {
        atEnd_ = true;
        unbind();
        return;
    }
    work_.statement().check(result);
    // A row that failed makes the whole block no failure by itself.
    if (std::find(status_.get(), status_.get() + count_, SQL_ROW_ERROR) != status_.get() + count_)
        throw work_.statement().failure();
    for (std::size_t row = 0; row < count_; ++row)
        addRow(row);
}

void OdbcFetch::addRow(std::size_t row) {
    for (const Cell& cell : cells_) {
        const SQLLEN length = cell.lengths[row];
        if (length == SQL_NULL_DATA) {
            rows_.addNull();
            continue;
        }
        const std::size_t ending = cell.form.type == SQL_C_CHAR ? 1 : 0;
        if (length < 0 || static_cast<std::size_t>(length) + ending > cell.form.bytes) {
            throw Failure(FailureKind::truncation, 0, "驱动程序给出的值比它说明的列长: " + std::to_string(length));
        }
        addValue(cell, {cell.values.get() + row * cell.form.bytes, static_cast<std::size_t>(length)});
    }
    rows_.endRow();
}

void OdbcFetch::addValue(const Cell& cell, std::string_view value) {
    char buffer[400];
    switch (cell.form.type) {
        case SQL_C_SBIGINT:
            return rows_.addText(number<std::int64_t>(buffer, value.data()));
        case SQL_C_FLOAT:
            return rows_.addText(number<float>(buffer, value.data()));
        case SQL_C_DOUBLE:
            return rows_.addText(number<double>(buffer, value.data()));
        case SQL_C_TYPE_TIMESTAMP:
            return rows_.addText(date(buffer, value.data()));
        default:
            return rows_.addText(cell.type == ColumnType::decimal ? plainDecimal(value, room_)
                                 : cell.type == ColumnType::date  ? time(value, room_)
                                                                  : value);
    }
}

void OdbcFetch::fetchRow() {
    const SQLRETURN result = work_.await([&] { return SQLFetch(statement_); });
    if (result == SQL_NO_DATA) {
        atEnd_ = true;
        return;
    }
    work_.statement().check(result);
    SQLUSMALLINT index = 0;
    for (const Cell& cell : cells_) {
        if (const auto value = readCell(++index, cell.form.type)) {
            addValue(cell, *value);
        } else {
            rows_.addNull();
        }
    }
    rows_.endRow();
}

// A value of any length; none for null.
std::optional<std::string_view> OdbcFetch::readCell(SQLUSMALLINT column, SQLSMALLINT type) {
    const std::size_t ending = type == SQL_C_CHAR ? 1 : 0;
    std::size_t used = 0;
    for (;;) {
        SQLLEN length = 0;
        const std::size_t room = pieceBytes_ - used;
        const SQLRETURN result = work_.await([&] {
            return SQLGetData(statement_, column, type, piece_.get() + used, static_cast<SQLLEN>(room), &length);
        });
        if (result == SQL_NO_DATA) break;
        work_.statement().check(result);
        if (length == SQL_NULL_DATA) return std::nullopt;
        const bool whole = length != SQL_NO_TOTAL && static_cast<std::size_t>(length) + ending <= room;
        if (whole) {
            used += static_cast<std::size_t>(length);
            break;
        }
        used += room - ending;
        // Where the driver tells the rest, one more call reads all of it.
        enlarge(used, length == SQL_NO_TOTAL ? pieceBytes_ : static_cast<std::size_t>(length) - room + ending);
    }
    return std::string_view(piece_.get(), used);
}

void OdbcFetch::enlarge(std::size_t used, std::size_t more) {
    pieceBytes_ = used + more + 2;
    auto larger = std::make_unique_for_overwrite<char[]>(pieceBytes_);
    std::copy_n(piece_.get(), used, larger.get());
    piece_ = std::move(larger);
}

std::string_view plainDecimal(std::string_view text, std::string& room) {
    const std::size_t point = text.find('.');
    if (point != std::string_view::npos) {
        const std::size_t last = text.find_last_not_of('0');
        text = text.substr(0, last == point ? point : last + 1);
    }
    const bool negative = text.starts_with('-');
    const std::string_view digits = text.substr(negative ? 1 : 0);
    if (digits.empty() || digits == "0") return "0";
    if (digits.front() != '.') return text;
    room.assign(negative ? "-0" : "0").append(digits);
    return room;
}

}  // namespace orvenmod::store::odbc
