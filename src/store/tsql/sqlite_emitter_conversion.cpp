// Conversions. As a call, each costs something for every row, and over a column it costs the index; so one becomes a
// call only where nothing less will do.
//
//   fitemid='5'      ("tblItem"."fitemid" = ?1)           a literal is converted once, when it is bound
//   fitemid=5        ("tblItem"."fitemid" = ?1)           nothing to convert
//   fnumber=5        (ts_cast("tblItem"."fnumber", 'varchar(30)', 'int') = ?1)
//
//   case when fitemid=1 then '1' else 2 end
//
//   CASE WHEN ("tblItem"."fitemid" = ?1) THEN ts_cast(?2, 'varchar(8000)', 'int') ELSE ?3 END
//
// In the last the literal waits: were it no number, the server would fail only when a row gets there.
#include <charconv>
#include <cmath>
#include <cstdio>

#include "store/tsql/sqlite_decimal.h"
#include "store/tsql/sqlite_emitter.h"
#include "store/tsql/typerules.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql {
namespace {

std::string sqlText(const Datum& datum) {
    switch (datum.kind) {
        case Datum::Kind::null:
            return "NULL";
        case Datum::Kind::integer:
            return std::to_string(datum.integer);
        case Datum::Kind::text:
            return quoteText(datum.text);
        case Datum::Kind::decimal:
            return quoteText(datum.text + kDecimalMark);
        case Datum::Kind::blob:
            return "x'" + hexDigits(datum.text) + "'";
        case Datum::Kind::real:
            break;
    }
    char digits[40];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, datum.real);
    std::string text(digits, end);
    return text.find_first_of(".en") == std::string::npos ? text + ".0" : text;
}

}  // namespace

std::string SqliteEmitter::inlineText(const Datum& value, const Type& type) const {
    Datum datum = value;
    // A whole decimal reads better as 2 than as 2.0; beyond 15 digits the double is no longer exact.
    if (datum.kind == Datum::Kind::real && type.isDecimal() && std::nearbyint(datum.real) == datum.real &&
        std::abs(datum.real) < 1e15) {
        datum.kind = Datum::Kind::integer;
        datum.integer = static_cast<std::int64_t>(datum.real);
    }
    return sqlText(datum);
}

std::string SqliteEmitter::conversion(const Expression& expression) {
    const Expression& inner = *expression.operands[0];
    const Type& from = inner.type;
    const Type& to = expression.type;
    if (inner.kind == ExpressionKind::null) {
        return "NULL";
    }
    const bool styled = expression.operands.size() > 1;
    if (stored_ && styled) {
        const std::string plain = storedStyle(expression);
        if (!plain.empty()) {
            return plain;
        }
    }
    if (!styled && !expression.attempt) {
        if (inner.kind == ExpressionKind::literal && (inline_ || conditional_ == 0 || !mayFail(from, to))) {
            return literal(inner, to, Parameter::Use::value, &expression);
        }
        if (from.isWideDecimal() && to.kind == Kind::floating) {
            return "CAST(" + value(inner) + " AS REAL)";
        }
        if (sameRepresentation(from, to)) {
            return value(inner);
        }
        if (stored_) {
            const std::string plain = storedConversion(value(inner), from, to);
            if (!plain.empty()) {
                return plain;
            }
        }
    }
    const std::string types = ", " + quoteText(printType(from)) + ", " + quoteText(printType(to));
    const std::string style = styled ? ", " + value(*expression.operands[1]) : "";
    if (expression.assigned != nullptr) {
        const ColumnInfo& column = expression.assigned->columns[static_cast<std::size_t>(expression.assignedColumn)];
        return "ts_store(" + value(inner) + types + ", " + quoteText(expression.assigned->name) + ", " +
               quoteText(column.name) + ")";
    }
    const char* name = expression.attempt ? "ts_try(" : styled ? "ts_convert(" : "ts_cast(";
    return name + value(inner) + types + style + ")";
}

}  // namespace orvenmod::store::tsql
