#include "store/postgres/postgrestableloader.h"

#include <algorithm>

#include "store/postgres/parameters.h"
#include "store/postgres/postgresconnection.h"
#include "store/tsql/emitter.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/postgresnames.h"
#include "store/tsql/rowwriter.h"

namespace orvenmod::store::postgres {

namespace {

using tsql::Kind;
using tsql::Type;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// A decimal whose digits before the point the type has room for; the server rounds those behind.
bool fitsDecimal(std::string_view text, const Type& type) {
    if (text.starts_with('-')) text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    const auto all = [](std::string_view part) { return std::all_of(part.begin(), part.end(), isDigit); };
    return point > 0 &&
           point < static_cast<std::size_t>(type.precision - type.scale) + (point == text.size() ? 1 : 0) &&
           all(text.substr(0, point)) && all(text.substr(std::min(point + 1, text.size())));
}

/// 2026-01-02 03:04:05, with milliseconds or without.
bool isStoredDate(std::string_view text) {
    constexpr std::string_view kForm = "0000-00-00 00:00:00.000";
    if (text.size() != 19 && text.size() != kForm.size()) return false;
    return std::equal(text.begin(), text.end(), kForm.begin(),
                      [](char c, char form) { return form == '0' ? isDigit(c) : c == form; });
}

/// Whether the server takes the text as the dialect would, without a conversion.
bool fits(std::string_view text, const Type& type) {
    constexpr std::size_t kSafeDigits = 9;
    switch (type.kind) {
        case Kind::varchar:
        case Kind::nvarchar:
        case Kind::text:
        case Kind::ntext:
            // A character takes no more bytes in code page 936 than in UTF-8, and is no more than one.
            return type.length <= 0 || text.size() <= static_cast<std::size_t>(type.length);
        case Kind::integer:
        case Kind::bigint:
            return !text.empty() && text.size() <= kSafeDigits && std::all_of(text.begin(), text.end(), isDigit);
        case Kind::decimal:
            return fitsDecimal(text, type);
        case Kind::datetime:
            // The year 1753 is its first.
            return isStoredDate(text) && text >= "1753";
        default:
            return false;
    }
}

}  // namespace

PostgresTableLoader::PostgresTableLoader(PostgresConnection& connection, std::string_view table,
                                         const std::vector<std::string>& fields)
    : connection_(connection), table_(tsql::tableNamed(connection.session().catalog(), table)) {
    std::string names;
    for (const std::string& field : fields) {
        const tsql::ColumnInfo& column = columns_.emplace_back(tsql::columnNamed(table_, field));
        names += (names.empty() ? "" : ",") + tsql::quoteName(tsql::nativeNameOf(column));
    }
    command_ = "COPY " + tsql::quoteName(tsql::nativeNameOf(table_)) + "(" + names + ") FROM STDIN";
}

void PostgresTableLoader::write(std::string_view value, const tsql::ColumnInfo& column) {
    if (column.type.isBinary()) {
        constexpr char kDigits[] = "0123456789abcdef";
        text_ += "\\\\x";
        for (const char c : value) {
            text_ += kDigits[static_cast<unsigned char>(c) >> 4U];
            text_ += kDigits[static_cast<unsigned char>(c) & 0xFU];
        }
        return;
    }
    Parameters converted;
    if (!fits(value, column.type)) {
        converted.addText(tsql::storedValue(value, table_, column), value, column.type);
        value = converted.values()[0];
    } else if (column.type.isText() && !isText(value)) {
        throw tsql::Error(tsql::kNoText);
    }
    for (const char c : value) {
        switch (c) {
            case '\\':
                text_ += "\\\\";
                break;
            case '\n':
                text_ += "\\n";
                break;
            case '\r':
                text_ += "\\r";
                break;
            case '\t':
                text_ += "\\t";
                break;
            default:
                text_ += c;
        }
    }
}

void PostgresTableLoader::add(const Recordset& rows) {
    text_.clear();
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const int column = static_cast<int>(i);
            if (i > 0) text_ += '\t';
            const Value value = rows.cell(row, column);
            try {
                if (value) {
                    write(*value, columns_[i]);
                } else {
                    text_ += "\\N";
                }
            } catch (const tsql::Error& error) {
                throw RowFailure(tsql::worded(connection_.language(), error), row, column);
            }
        }
        text_ += '\n';
    }
    const auto loaded = [&](std::size_t row, const std::string& name) -> PostgresConnection::Loaded {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const int column = static_cast<int>(i);
            if (tsql::nativeName(columns_[i].name) == tsql::nativeName(name))
                return {column, std::string(rows.cell(row, column).value_or("NULL"))};
        }
        return {};
    };
    connection_.loadRows(tsql::nativeNameOf(table_), command_, text_, loaded);
}

}  // namespace orvenmod::store::postgres
