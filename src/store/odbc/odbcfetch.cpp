#include "store/odbc/odbcfetch.h"

#include <charconv>
#include <chrono>
#include <cstdio>

namespace orvenmod::store::odbc {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kProgressEvery{100};
constexpr std::size_t kFirstBuffer = 8192;

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
            return ColumnType::date;
        case SQL_BINARY:
        case SQL_VARBINARY:
        case SQL_LONGVARBINARY:
            return ColumnType::binary;
        default:
            return ColumnType::text;
    }
}

class Fetch {
public:
    Fetch(const OdbcHandle& statement, SQLSMALLINT columns)
        : statement_(statement), rows_(describe(statement, columns)) {}

    /// The rows, but for those that `part`, where there is one, was given.
    Recordset run(const std::function<void()>& progress, const Connection::Part& part = nullptr) {
        auto last = Clock::now();
        for (;;) {
            const SQLRETURN result = SQLFetch(statement_.get());
            if (result == SQL_NO_DATA) return std::move(rows_);
            statement_.check(result);
            for (int i = 0; i < rows_.columnCount(); ++i)
                addCell(static_cast<SQLUSMALLINT>(i + 1), type(i));
            rows_.endRow();
            if (part && (rows_.rowCount() >= kRowsPerPart || rows_.memory() >= kBytesPerPart)) {
                part(rows_);
                rows_ = Recordset(rows_.columns());
            }
            if (progress && Clock::now() - last >= kProgressEvery) {
                progress();
                last = Clock::now();
            }
        }
    }

private:
    static Recordset describe(const OdbcHandle& statement, SQLSMALLINT count) {
        std::vector<Column> columns;
        for (SQLSMALLINT i = 1; i <= count; ++i) {
            SQLCHAR name[512] = {};
            SQLSMALLINT length = 0;
            SQLSMALLINT type = 0;
            SQLULEN size = 0;
            SQLSMALLINT digits = 0;
            SQLSMALLINT nullable = 0;
            statement.check(SQLDescribeCol(statement.get(), static_cast<SQLUSMALLINT>(i), name, sizeof name, &length,
                                           &type, &size, &digits, &nullable));
            columns.push_back({reinterpret_cast<const char*>(name), columnType(type)});
        }
        return Recordset(std::move(columns));
    }

    ColumnType type(int i) const { return rows_.columns()[static_cast<std::size_t>(i)].type; }

    void addCell(SQLUSMALLINT column, ColumnType type) {
        if (type == ColumnType::date) return addDate(column);
        if (type == ColumnType::real) return addReal(column);
        const bool binary = type == ColumnType::binary;
        if (!readLong(column, binary ? SQL_C_BINARY : SQL_C_CHAR, binary ? 0 : 1)) return rows_.addNull();
        if (type == ColumnType::decimal) return rows_.addText(plainDecimal(buffer_));
        rows_.addText(buffer_);
    }

    // Reads a value of any length into the buffer; false for null. `ending`: the zero byte behind a text's piece.
    bool readLong(SQLUSMALLINT column, SQLSMALLINT type, std::size_t ending) {
        buffer_.resize(kFirstBuffer);
        std::size_t used = 0;
        for (;;) {
            SQLLEN length = 0;
            const std::size_t room = buffer_.size() - used;
            const SQLRETURN result =
                SQLGetData(statement_.get(), column, type, buffer_.data() + used, static_cast<SQLLEN>(room), &length);
            if (result == SQL_NO_DATA) break;
            statement_.check(result);
            if (length == SQL_NULL_DATA) return false;
            const bool whole = length != SQL_NO_TOTAL && static_cast<std::size_t>(length) + ending <= room;
            if (whole) {
                used += static_cast<std::size_t>(length);
                break;
            }
            used += room - ending;
            // Where the driver tells the rest, one more call reads all of it.
            const std::size_t rest =
                length == SQL_NO_TOTAL ? buffer_.size() : static_cast<std::size_t>(length) - room + ending;
            buffer_.resize(used + rest + ending + 1);
        }
        buffer_.resize(used);
        return true;
    }

    void addReal(SQLUSMALLINT column) {
        double value = 0;
        SQLLEN length = 0;
        statement_.check(SQLGetData(statement_.get(), column, SQL_C_DOUBLE, &value, sizeof value, &length));
        if (length == SQL_NULL_DATA) return rows_.addNull();
        char text[400];
        const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
        rows_.addText({text, static_cast<std::size_t>(end - text)});
    }

    void addDate(SQLUSMALLINT column) {
        SQL_TIMESTAMP_STRUCT value{};
        SQLLEN length = 0;
        statement_.check(SQLGetData(statement_.get(), column, SQL_C_TYPE_TIMESTAMP, &value, sizeof value, &length));
        if (length == SQL_NULL_DATA) return rows_.addNull();
        char text[64];
        int size = std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", value.year, value.month, value.day,
                                 value.hour, value.minute, value.second);
        const unsigned milliseconds = value.fraction / 1'000'000;
        if (milliseconds != 0)
            size += std::snprintf(text + size, sizeof text - static_cast<std::size_t>(size), ".%03u", milliseconds);
        rows_.addText({text, static_cast<std::size_t>(size)});
    }

    const OdbcHandle& statement_;
    Recordset rows_;
    std::string buffer_;
};

}  // namespace

std::string plainDecimal(const std::string& text) {
    const std::size_t point = text.find('.');
    if (point == std::string::npos) return text;
    const bool negative = text.starts_with('-');
    const std::size_t first = negative ? 1 : 0;
    const std::size_t last = text.find_last_not_of("0.");
    const std::size_t behind = last == std::string::npos || last < point ? 0 : last + 1 - point;
    std::string whole = text.substr(first, point - first);
    if (whole.empty()) whole = "0";
    const std::string digits = whole + text.substr(point, behind);
    return negative && digits != "0" ? "-" + digits : digits;
}

Recordset fetchRows(const OdbcHandle& statement, SQLSMALLINT columns, const std::function<void()>& progress) {
    return Fetch(statement, columns).run(progress);
}

void fetchParts(const OdbcHandle& statement, SQLSMALLINT columns, const std::function<void()>& progress,
                const Connection::Part& part) {
    const Recordset last = Fetch(statement, columns).run(progress, part);
    if (last.rowCount() > 0) part(last);
}

}  // namespace orvenmod::store::odbc
