// Conversions. As a call, each costs something for every row, and over a column it costs the index; so one becomes a
// call only where PostgreSQL's own cast doesn't do the same.
//
//   fitemid='5'                   ("tblItem"."fitemid" = $1::integer)
//   convert(varchar(20),fitemid)  CAST("tblItem"."fitemid" AS text)
//   fnumber=5                     (CAST(orven.ts_bigint("tblItem"."fnumber", 'varchar(30)', 'int') AS integer) = ..)
//
//   case when fitemid=1 then '1' else 2 end
//   CASE WHEN .. THEN CAST(orven.ts_bigint((SELECT $2::text), 'varchar(8000)', 'int') AS integer) ELSE $3::integer END
//
// In the last the literal waits until a row gets there; within a query of its own it is no constant which the planner
// would convert, and fail with, in advance.
#include <algorithm>

#include "store/tsql/postgres_emitter.h"
#include "store/tsql/postgresnames.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {
namespace {

bool isPadded(const Type& type) { return type.kind == Kind::character || type.kind == Kind::nchar; }

/// Whether every value of the integer type has room in the text.
bool hasRoom(const Type& text, const Type& integer) {
    const int signs = integer.kind == Kind::bit ? 1 : asDecimal(integer).precision + 1;
    return !isPadded(text) && (text.length < 0 || text.length >= signs);
}

const char* functionFor(const Type& to) {
    if (to.isText()) {
        return "text";
    }
    if (to.isInteger()) {
        return "bigint";
    }
    if (to.isDecimal()) {
        return "numeric";
    }
    if (to.isFloat()) {
        return "float";
    }
    if (to.isBinary()) {
        return "binary";
    }
    return to.kind == Kind::time ? "time" : to.isDate() ? "datetime" : "guid";
}

}  // namespace

std::string widened(const std::string& text, const Type& type) {
    if (type.isInteger()) {
        return castTo(text, "bigint");
    }
    if (type.isDecimal()) {
        return castTo(text, "numeric");
    }
    if (type.isFloat()) {
        return castTo(text, "double precision");
    }
    return type.isDate() && type.kind != Kind::time ? castTo(text, "timestamp") : text;
}

/// What a cast of PostgreSQL's own, or none at all, does exactly; empty for the rest.
std::string PostgresEmitter::exactConversion(const Expression& inner, const Type& to) {
    const Type& from = inner.type;
    if (sameRepresentation(from, to)) {
        const std::string text = value(inner);
        const bool same = nativeType(from) == nativeType(to) && from.kind != Kind::date;
        return same || to.isNull() ? text : castTo(text, nativeType(to));
    }
    if (from.isInteger() && to.isText() && hasRoom(to, from)) {
        return castTo(value(inner), "text");
    }
    return "";
}

std::string PostgresEmitter::storedConversion(const Expression& inner, const Type& to) {
    const Type& from = inner.type;
    if (from.isNumber() && to.isDecimal()) {
        return castTo(value(inner), nativeColumnType(to));
    }
    if (from.isNumber() && (to.kind == Kind::integer || to.kind == Kind::bigint)) {
        return castTo(from.isInteger() ? value(inner) : "trunc(" + value(inner) + ")", nativeType(to));
    }
    if (from.isText() && to.kind == Kind::nvarchar && to.length > 0) {
        return "left(" + value(inner) + ", " + std::to_string(to.length) + ")";
    }
    return "";
}

/// convert(varchar(n), date, style) in the styles that begin with the year.
std::string PostgresEmitter::storedStyle(const Expression& cast) {
    const Expression& style = *cast.operands[1];
    const Type& to = cast.type;
    const Type& from = cast.operands[0]->type;
    if (!from.isDate() || from.kind == Kind::time || !to.isText() || isPadded(to) ||
        style.kind != ExpressionKind::literal || cast.attempt) {
        return "";
    }
    const std::string number = literalOf(style).value();
    const bool whole = number == "120" && (to.length >= 19 || to.length < 0);
    const bool day = (number == "120" && to.length == 10) || (number == "23" && (to.length >= 10 || to.length < 0));
    const bool digits = number == "112" && (to.length >= 8 || to.length < 0);
    if (!whole && !day && !digits) {
        return "";
    }
    const char* form = whole ? "YYYY-MM-DD HH24:MI:SS" : day ? "YYYY-MM-DD" : "YYYYMMDD";
    return "to_char(" + value(*cast.operands[0]) + ", '" + form + "')";
}

/// By the runtime's function; `text` is the value of type `from`.
std::string PostgresEmitter::converted(const std::string& text, const Type& from, const Expression& conversion) {
    const Type& to = conversion.type;
    const bool stored = conversion.assigned != nullptr && to.isText();
    std::string call = std::string("orven.ts_") +
                       (conversion.attempt ? "try_"
                        : stored           ? "store_"
                                           : "") +
                       functionFor(to) + "(" + widened(text, from) + ", " + quoteText(printType(from)) + ", " +
                       quoteText(printType(to));
    if (stored) {
        const auto position = static_cast<std::size_t>(conversion.assignedColumn);
        call +=
            ", " + quoteText(conversion.assigned->name) + ", " + quoteText(conversion.assigned->columns[position].name);
    } else if (conversion.operands.size() > 1) {
        call += ", " + value(*conversion.operands[1]);
    }
    call += ")";
    const bool narrower = (to.isInteger() && to.kind != Kind::bigint) || to.kind == Kind::real;
    return narrower ? castTo(call, nativeType(to)) : call;
}

std::string PostgresEmitter::conversion(const Expression& expression) {
    const Expression& inner = *expression.operands[0];
    const Type& to = expression.type;
    if (inner.kind == ExpressionKind::null) {
        return nullText(to);
    }
    const bool styled = expression.operands.size() > 1;
    const bool isLiteral = inner.kind == ExpressionKind::literal;
    std::string plain;
    if (styled) {
        plain = stored_ ? storedStyle(expression) : "";
    } else if (!expression.attempt) {
        if (isLiteral && (inline_ || conditional_ == 0 || !mayFail(inner.type, to))) {
            return literal(inner, to, Parameter::Use::value, &expression);
        }
        plain = exactConversion(inner, to);
        if (plain.empty() && stored_) {
            plain = storedConversion(inner, to);
        }
    }
    if (!plain.empty()) {
        return plain;
    }
    return converted(waiting(inner, value(inner)), inner.type, expression);
}

}  // namespace orvenmod::store::tsql
