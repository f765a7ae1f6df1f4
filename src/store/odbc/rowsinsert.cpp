#include "store/odbc/rowsinsert.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "store/odbc/widetext.h"

namespace orvenmod::store::odbc {

namespace {

constexpr std::size_t kMostRows = 500;
constexpr std::size_t kBlockBytes = 1UL << 20;
// Longer values aren't of the short types, for which drivers and servers have other roads.
constexpr std::size_t kLongest = 4000;

bool holdsBytes(const Recordset& rows, int place) {
    return rows.columns()[static_cast<std::size_t>(place)].type == ColumnType::binary;
}

}  // namespace

std::size_t rowsOfBlock(const Recordset& rows, std::size_t first) {
    std::vector<std::size_t> widths(rows.columns().size(), sizeof(char16_t));
    std::size_t count = 0;
    for (std::size_t row = first; row < rows.rowCount() && count < kMostRows; ++row, ++count) {
        std::size_t rowBytes = 0;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const std::size_t size = rows.cell(row, static_cast<int>(i)).value_or("").size();
            if (size > kLongest) return count;
            widths[i] = std::max(widths[i], size * sizeof(char16_t));
            rowBytes += widths[i];
        }
        if (count > 0 && (count + 1) * rowBytes > kBlockBytes) return count;
    }
    return count;
}

InsertOfRows::InsertOfRows(OdbcHandle statement, std::string insert,
                           const std::vector<OdbcTableWriter::Column>& columns, const Recordset& rows,
                           std::size_t first, std::size_t count)
    : OdbcWork(std::move(statement)), insert_(std::move(insert)), states_(count, SQL_PARAM_UNUSED) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        take(columns[i], rows, static_cast<int>(i), first);
}

void InsertOfRows::take(const OdbcTableWriter::Column& column, const Recordset& rows, int place, std::size_t first) {
    Values& values = values_.emplace_back();
    std::size_t longest = 1;
    bool plain = true;
    for (std::size_t row = 0; row < states_.size(); ++row) {
        const std::string_view value = rows.cell(first + row, place).value_or("");
        longest = std::max(longest, value.size());
        plain = plain && isAscii(value);
    }
    const bool wide = !plain && !holdsBytes(rows, place);
    if (holdsBytes(rows, place)) values.form = SQL_C_BINARY;
    if (wide) values.form = SQL_C_WCHAR;
    values.type = isBinary(column.type) ? column.type : static_cast<SQLSMALLINT>(wide ? SQL_WVARCHAR : SQL_VARCHAR);
    values.characters = longest;
    values.width = wide ? longest * sizeof(char16_t) : longest;
    values.bytes.resize(values.width * states_.size());
    for (std::size_t row = 0; row < states_.size(); ++row) {
        const Value value = rows.cell(first + row, place);
        const std::u16string letters = wide && value ? wideText(*value) : std::u16string();
        const void* source = wide ? static_cast<const void*>(letters.data()) : value.value_or("").data();
        const std::size_t size = wide ? letters.size() * sizeof(char16_t) : value.value_or("").size();
        if (size > 0) std::memcpy(values.bytes.data() + row * values.width, source, size);
        values.lengths.push_back(value ? static_cast<SQLLEN>(size) : SQL_NULL_DATA);
    }
}

void InsertOfRows::bind() {
    SQLUSMALLINT index = 0;
    for (Values& values : values_) {
        statement().check(SQLBindParameter(statement().get(), ++index, SQL_PARAM_INPUT, values.form, values.type,
                                           values.characters, 0, values.bytes.data(), static_cast<SQLLEN>(values.width),
                                           values.lengths.data()));
    }
}

void InsertOfRows::run() {
    const SQLHANDLE handle = statement().get();
    const auto count = reinterpret_cast<SQLPOINTER>(states_.size());
    taken_ = SQLSetStmtAttr(handle, SQL_ATTR_PARAMSET_SIZE, count, 0) == SQL_SUCCESS &&
             SQLSetStmtAttr(handle, SQL_ATTR_PARAM_STATUS_PTR, states_.data(), 0) == SQL_SUCCESS;
    if (!taken_) return;
    bind();
    SQLRETURN result =
        await([&] { return SQLExecDirect(handle, sqlText(insert_.c_str()), static_cast<SQLINTEGER>(insert_.size())); });
    // Some drivers tell each row's outcome as a result of its own.
    for (; result != SQL_NO_DATA; result = await([&] { return SQLMoreResults(handle); }))
        checkRows(result);
}

// A row that failed makes the whole no failure by itself.
void InsertOfRows::checkRows(SQLRETURN result) {
    const auto failed = std::find(states_.begin(), states_.end(), SQL_PARAM_ERROR);
    if (failed != states_.end()) failedRow_ = static_cast<std::size_t>(failed - states_.begin());
    if (failedRow_) throw statement().failure();
    statement().check(result);
}

}  // namespace orvenmod::store::odbc
