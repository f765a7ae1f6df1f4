#include "store/tsql/postgres_emitter.h"

#include <charconv>

#include "store/tsql/decimal.h"
#include "store/tsql/like.h"
#include "store/tsql/postgresnames.h"
#include "store/tsql/sameexpression.h"
#include "store/tsql/typerules.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {
namespace {

std::string numberText(const Datum& datum) {
    if (datum.kind == Datum::Kind::integer) {
        return std::to_string(datum.integer);
    }
    if (datum.kind == Datum::Kind::decimal) {
        return datum.text;
    }
    char digits[40];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, datum.real);
    return {digits, end};
}

/// A whole number with a point, so that it is no integer.
std::string decimalText(std::string digits) {
    if (digits.find('.') == std::string::npos) {
        digits += ".0";
    }
    return digits.starts_with('-') ? "(" + digits + ")" : digits;
}

}  // namespace

std::string castTo(const std::string& text, const std::string& type) { return "CAST(" + text + " AS " + type + ")"; }

std::string PostgresEmitter::tableName(const ObjectInfo& object) const { return quoteName(nativeNameOf(object)); }

std::string PostgresEmitter::columnName(const ColumnInfo& column) const { return quoteName(nativeNameOf(column)); }

std::string PostgresEmitter::placeholder(std::size_t number, const Parameter& parameter) const {
    return "$" + std::to_string(number) + "::" + nativeType(parameter.to);
}

std::string PostgresEmitter::nullText(const Type& type) const {
    return type.isNull() ? "NULL" : castTo("NULL", nativeType(type));
}

std::string PostgresEmitter::inlineText(const Datum& datum, const Type& type) const {
    if (datum.kind == Datum::Kind::null) {
        return nullText(type);
    }
    if (datum.kind == Datum::Kind::blob) {
        return "'\\x" + hexDigits(datum.text) + "'::bytea";
    }
    if (datum.kind == Datum::Kind::text) {
        return quoteText(datum.text) + "::" + nativeType(type);
    }
    if (type.isInteger()) {
        return numberText(datum);
    }
    return type.isDecimal() ? decimalText(numberText(datum)) : castTo(numberText(datum), nativeType(type));
}

/// A decimal keeps the digits that a double would lose.
std::string PostgresEmitter::inlined(int index, const Type& type, Parameter::Use use,
                                     const Expression* conversion) const {
    const Literal& literal = literals_[static_cast<std::size_t>(index)];
    if (type.kind == Kind::decimal && literal.kind == LiteralKind::decimal) {
        auto number = Decimal::parse(literal.text);
        if (number && number->integerDigits() <= type.precision - type.scale) {
            number->round(type.scale);
            return decimalText(number->print());
        }
    }
    return Emitter::inlined(index, type, use, conversion);
}

std::string PostgresEmitter::value(const Expression& expression) {
    for (const Expression* group : groups_) {
        if (!sameExpression(*group, expression, literals_)) {
            continue;
        }
        // As the group has it, literals included, so that PostgreSQL sees that the two are one.
        Groups none;
        groups_.swap(none);
        const std::string text = Emitter::value(*group);
        groups_.swap(none);
        return group->type.isText() ? "orven.ts_first(" + text + ")" : text;
    }
    return Emitter::value(expression);
}

// The planner calculates constants in advance, also in a branch that is never taken; a query of its own waits. A check
// and a default have no room for one.
std::string PostgresEmitter::waiting(const Expression& expression, const std::string& text) const {
    return conditional_ > 0 && !bareColumns_ && isConstantExpression(expression) ? "(SELECT " + text + ")" : text;
}

// PostgreSQL's integers fail beyond their range, but those narrower than int are kept as smallint.
std::string PostgresEmitter::integerArithmetic(const Expression& expression, const std::string& left,
                                               const std::string& operand) {
    const std::string right = waiting(expression, operand);
    const char* sign = expression.op == Operator::bitXor ? "#" : spelling(expression.op);
    const bool narrow = expression.type.kind < Kind::integer;
    const bool bits =
        expression.op == Operator::bitAnd || expression.op == Operator::bitOr || expression.op == Operator::bitXor;
    if (!narrow || bits) {
        return "(" + left + " " + sign + " " + right + ")";
    }
    const std::string wide = castTo(left, "bigint") + " " + sign + " " + right;
    return castTo("orven.ts_range(" + wide + ", " + quoteText(printType(expression.type)) + ")", "smallint");
}

std::string PostgresEmitter::decimalArithmetic(const Expression& expression, const std::string& left,
                                               const std::string& operand) {
    const std::string right = waiting(expression, operand);
    const std::string plain = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    const std::string size =
        std::to_string(expression.type.precision) + ", " + std::to_string(expression.type.scale) + ")";
    switch (expression.op) {
        case Operator::divide:
            return "orven.ts_decdiv(" + left + ", " + right + ", " + size;
        case Operator::modulo:
            return plain;
        default:
            return castTo(left + " " + spelling(expression.op) + " " + right, "numeric(" + size);
    }
}

std::string PostgresEmitter::floatArithmetic(const Expression& expression, const std::string& left,
                                             const std::string& operand) {
    const std::string right = waiting(expression, operand);
    const std::string plain = left + " " + spelling(expression.op) + " " + right;
    // Beside any other number PostgreSQL takes a real for a float.
    return expression.type.kind == Kind::real ? castTo(plain, "real") : "(" + plain + ")";
}

/// A date and whole days go through dateadd, anything else through the days since 1900 as a float.
std::string PostgresEmitter::dateArithmetic(const Expression& expression) {
    const Expression& left = *expression.operands[0];
    const Expression& right = *expression.operands[1];
    const bool minus = expression.op == Operator::subtract;
    const auto dateAdd = [this](const std::string& days, const Expression& date) {
        return "orven.ts_dateadd('day', " + days + ", " + argument(date, 'd') + ")";
    };
    if (left.type.isDate() && right.type.isInteger()) {
        return dateAdd((minus ? "- " : "") + value(right), left);
    }
    if (right.type.isDate() && left.type.isInteger() && !minus) {
        return dateAdd(value(left), right);
    }
    const auto days = [this](const Expression& side) {
        checkExplicit(side.type, typeOf(Kind::floating));
        return "orven.ts_float(" + widened(value(side), side.type) + ", " + quoteText(printType(side.type)) +
               ", 'float')";
    };
    return "orven.ts_datetime(" + days(left) + (minus ? " - " : " + ") + days(right) + ", 'float', " +
           quoteText(printType(expression.type)) + ")";
}

std::string PostgresEmitter::equalityForm(const std::string& text) const {
    return "lower(rtrim(" + text + ") COLLATE \"C\")";
}

std::string PostgresEmitter::comparedName(const std::string& name, const Type& type, Collation collation,
                                          const Type&) const {
    if (!type.isText()) {
        return name;
    }
    return collation == Collation::order ? orderForm(name, type) : equalityForm(name);
}

std::string PostgresEmitter::comparable(const Expression& expression, Collation collation, Side, const Type&) {
    if (!expression.type.isText()) {
        return value(expression);
    }
    if (collation == Collation::equality) {
        return expression.kind == ExpressionKind::literal ? literal(expression, expression.type, Parameter::Use::folded)
                                                          : equalityForm(value(expression));
    }
    const std::string key = orderForm(value(expression), expression.type);
    // Once for the statement instead of once for each row.
    return expression.kind == ExpressionKind::literal && !inline_ ? "(SELECT " + key + ")" : key;
}

// A literal pattern is turned into PostgreSQL's own terms when it is bound. One with a plain beginning bounds the texts
// that can match it, and an index serves the bounds:
//
//   fnumber like 'A0%'    (lower(rtrim("fnumber") COLLATE "C") >= $1::text AND .. < $2::text AND
//                          lower("fnumber" COLLATE "C") LIKE $3::text)
//   fnumber like '[AB]'   (lower("fnumber" COLLATE "C") ~ $1::text)
std::string PostgresEmitter::like(const Expression& expression) {
    const Expression& text = *expression.operands[0];
    const Expression& pattern = *expression.operands[1];
    if (pattern.kind != ExpressionKind::literal || expression.operands.size() > 2) {
        return std::string("(") + (expression.negated ? "NOT " : "") + "orven.ts_like(" + arguments(expression) + "))";
    }
    const bool plain = isPlainPattern(literalOf(pattern).text);
    std::string match = "lower(" + value(text) + " COLLATE \"C\")";
    match += plain ? (expression.negated ? " NOT LIKE " : " LIKE ") : (expression.negated ? " !~ " : " ~ ");
    if (inline_) {
        const std::string written = literalOf(pattern).value();
        return "(" + match + quoteText(plain ? serverPattern(written) : serverExpression(written)) + ")";
    }
    match += literal(pattern, pattern.type, plain ? Parameter::Use::likePattern : Parameter::Use::likeExpression);
    if (!mayUseIndex(expression)) {
        return "(" + match + ")";
    }
    const std::string key = groupKey(text);
    const std::string low = literal(pattern, pattern.type, Parameter::Use::foldedLow);
    const std::string high = literal(pattern, pattern.type, Parameter::Use::likeHigh);
    return "(" + key + " >= " + low + " AND " + key + " < " + high + " AND " + match + ")";
}

}  // namespace orvenmod::store::tsql
