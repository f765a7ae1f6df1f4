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

#include "store/tsql/conversions.h"
#include "store/tsql/sqlite_emitter.h"
#include "store/tsql/typerules.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql {
namespace {

int bytesOf(const Type& type) {
    return type.length < 0 ? 1 << 30 : type.isNationalText() ? type.length * 2 : type.length;
}

bool sameText(const Type& from, const Type& to) {
    // char and nchar pad, all others keep a text that is short enough as it is.
    const bool padded = to.kind == Kind::character || to.kind == Kind::nchar;
    if (padded) {
        return from == to;
    }
    if (to.length < 0) {
        return true;
    }
    return from.length >= 0 && (to.isNationalText() ? from.length <= to.length : bytesOf(from) <= to.length);
}

bool sameNumber(const Type& from, const Type& to) {
    if (from.isInteger() && to.isInteger()) {
        return from.kind <= to.kind;
    }
    if (to.kind == Kind::floating) {
        return true;
    }
    if (to.isDecimal() && !from.isFloat()) {
        const Type a = asDecimal(from);
        const Type b = asDecimal(to);
        return a.scale <= b.scale && a.precision - a.scale <= b.precision - b.scale;
    }
    return from.kind == to.kind && !to.isDecimal();
}

/// Whether converting a literal may fail, so that it has to wait until the value is needed.
bool mayFail(const Type& from, const Type& to) {
    const bool widening = from.isText() ? to.isText() : to.isText() || to.kind == Kind::floating;
    return !widening && !sameRepresentation(from, to);
}

Datum datumOf(const Literal& literal) {
    Datum datum;
    const std::string value = literal.value();
    switch (literal.kind) {
        case LiteralKind::integer:
            datum.kind = Datum::Kind::integer;
            datum.integer = std::stoll(value);
            break;
        case LiteralKind::decimal:
        case LiteralKind::real:
        case LiteralKind::money: {
            datum.kind = Datum::Kind::real;
            datum.real = nearestReal(value);
            break;
        }
        case LiteralKind::text:
        case LiteralKind::nationalText:
            datum.kind = Datum::Kind::text;
            datum.text = value;
            break;
        case LiteralKind::binary:
            datum.kind = Datum::Kind::blob;
            for (std::size_t i = 0; i < value.size();) {
                const std::size_t digits = value.size() % 2 == 1 && i == 0 ? 1 : 2;
                datum.text += static_cast<char>(std::stoi(value.substr(i, digits), nullptr, 16));
                i += digits;
            }
            break;
    }
    return datum;
}

std::string hex(const std::string& bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        result += kDigits[byte >> 4];
        result += kDigits[byte & 15];
    }
    return result;
}

std::string sqlText(const Datum& datum) {
    switch (datum.kind) {
        case Datum::Kind::null:
            return "NULL";
        case Datum::Kind::integer:
            return std::to_string(datum.integer);
        case Datum::Kind::text:
            return quoteText(datum.text);
        case Datum::Kind::blob:
            return "x'" + hex(datum.text) + "'";
        case Datum::Kind::real:
            break;
    }
    char digits[40];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, datum.real);
    std::string text(digits, end);
    return text.find_first_of(".en") == std::string::npos ? text + ".0" : text;
}

}  // namespace

bool sameRepresentation(const Type& from, const Type& to) {
    if (from == to || to.isNull()) {
        return true;
    }
    if (classOf(from) != classOf(to)) {
        return false;
    }
    switch (classOf(to)) {
        case TypeClass::text:
            return sameText(from, to);
        case TypeClass::number:
            return sameNumber(from, to);
        // Every other date is cut or rounded: smalldatetime to the minute, date to the day.
        case TypeClass::date:
            return to.kind == Kind::datetime && from.kind != Kind::time;
        case TypeClass::binary:
            return to.length < 0 && to.kind != Kind::binary;
        default:
            return true;
    }
}

std::string SqliteEmitter::literal(const Expression& expression, const Type& type, Parameter::Use use,
                                   const Expression* conversion) {
    if (conversion == nullptr && expression.assigned != nullptr) {
        conversion = &expression;
    }
    return inline_ ? inlined(expression.literal, type, use, conversion)
                   : parameter(expression.literal, type, use, conversion);
}

std::string SqliteEmitter::parameter(int index, const Type& type, Parameter::Use use, const Expression* conversion) {
    Parameter parameter;
    parameter.literal = index;
    parameter.from = literals_[static_cast<std::size_t>(index)].type();
    parameter.to = type;
    parameter.use = use;
    if (conversion != nullptr && conversion->assigned != nullptr) {
        parameter.assignment = true;
        parameter.table = conversion->assigned->name;
        parameter.column = conversion->assigned->columns[static_cast<std::size_t>(conversion->assignedColumn)].name;
    }
    // A literal that is used twice in one way is one parameter: SQLite finds an item of the select list again in its
    // GROUP BY or ORDER BY only where both read alike.
    std::vector<Parameter>& all = translation_->parameters;
    std::size_t at = 0;
    while (at < all.size() && !(all[at].literal == index && all[at].to == type && all[at].use == use &&
                                all[at].table == parameter.table && all[at].column == parameter.column)) {
        ++at;
    }
    if (at == all.size()) {
        all.push_back(std::move(parameter));
    }
    return "?" + std::to_string(at + 1);
}

std::string SqliteEmitter::inlined(int index, const Type& type, Parameter::Use use,
                                   const Expression* conversion) const {
    const Literal& literal = literals_[static_cast<std::size_t>(index)];
    ConvertMode mode;
    if (conversion != nullptr && conversion->assigned != nullptr) {
        mode.assignment = true;
        mode.table = conversion->assigned->name;
        mode.column = conversion->assigned->columns[static_cast<std::size_t>(conversion->assignedColumn)].name;
    }
    Datum datum = convert(datumOf(literal), literal.type(), type, mode);
    if (use == Parameter::Use::trimmed) {
        datum.text.erase(datum.text.find_last_not_of(' ') + 1);
    }
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
