// Fetching. The server writes values in its own way, and the recordset wants them as every store gives them:
//
//   numeric(18,4)   12.5000                    12.5
//   double          1e+20                      100000000000000000000
//   timestamp       2026-01-02 03:04:05.12     2026-01-02 03:04:05.120
//   date            2026-01-02                 2026-01-02 00:00:00
//   bytea           \x0aff                     the bytes
#include "store/postgres/fetch.h"

#include <array>
#include <charconv>
#include <string>

#include "store/postgres/native.h"
#include "store/tsql/resultcolumns.h"
#include "store/tsql/type.h"

namespace orvenmod::store::postgres {

namespace {

using tsql::Kind;
using tsql::Type;

constexpr int kRowsPerClockCheck = 1000;

void addInteger(Recordset& rows, std::string_view text) {
    if (text == "t") text = "1";
    if (text == "f") text = "0";
    rows.addText(text);
}

// Without zeros at its end.
void addDecimal(Recordset& rows, std::string_view text) {
    if (text.find('.') != std::string_view::npos) {
        text.remove_suffix(text.size() - 1 - text.find_last_not_of('0'));
        if (text.ends_with('.')) text.remove_suffix(1);
    }
    if (text == "-0") text = "0";
    rows.addText(text);
}

// Plain decimal, the shortest that reads back.
template <typename Number>
void addReal(Recordset& rows, std::string_view text) {
    if (text.find('e') == std::string_view::npos) return addDecimal(rows, text);
    Number value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    std::array<char, 400> buffer{};
    const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
    rows.addText({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
}

void addDate(Recordset& rows, std::string_view text) {
    constexpr std::size_t kDateOnly = 10;
    if (text.size() == kDateOnly && text[4] == '-') {
        std::string whole(text);
        return rows.addText(whole += " 00:00:00");
    }
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) return rows.addText(text);
    std::string padded(text.substr(0, point + 4));
    padded.resize(point + 4, '0');
    rows.addText(padded);
}

int hexValue(char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; }

void addBinary(Recordset& rows, std::string_view text) {
    if (!text.starts_with("\\x")) return rows.addText(text);
    text.remove_prefix(2);
    std::string bytes(text.size() / 2, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(hexValue(text[2 * i]) * 16 + hexValue(text[2 * i + 1]));
    rows.addText(bytes);
}

using AddCell = void (*)(Recordset&, std::string_view);

void addText(Recordset& rows, std::string_view text) { rows.addText(text); }

AddCell adderFor(const Type& type) {
    if (type.isInteger()) return addInteger;
    if (type.isDecimal()) return addDecimal;
    if (type.kind == Kind::real) return addReal<float>;
    if (type.isFloat()) return addReal<double>;
    if (type.isDate()) return addDate;
    if (type.isBinary()) return addBinary;
    return addText;
}

}  // namespace

RowReader::RowReader(const std::vector<tsql::ResultColumn>& columns) {
    for (const tsql::ResultColumn& column : columns)
        add_.push_back(adderFor(column.type));
}

void RowReader::add(Recordset& rows, const PGresult* result, int row) const {
    for (std::size_t i = 0; i < add_.size(); ++i) {
        const int column = static_cast<int>(i);
        if (PQgetisnull(result, row, column) != 0) {
            rows.addNull();
        } else {
            add_[i](rows, textOf(result, row, column));
        }
    }
    rows.endRow();
}

Recordset fetchRows(const PGresult* result, const std::vector<tsql::ResultColumn>& columns,
                    server::Progress& progress) {
    Recordset rows = tsql::emptyRecordset(columns);
    const RowReader reader(columns);
    const int count = PQntuples(result);
    for (int row = 0; row < count; ++row) {
        reader.add(rows, result, row);
        if (row % kRowsPerClockCheck == 0) progress.report();
    }
    // The library frees a million rows at one go.
    progress.reportBeforeWork();
    return rows;
}

}  // namespace orvenmod::store::postgres
