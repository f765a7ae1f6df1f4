// Comparisons: of texts by two collations, of decimals by two forms.
//
// On the server one collation does everything: 'abc ' equals 'ABC', and Chinese sorts by its sound. The second needs a
// collation of our own, and an index in it would make the table unusable for every other program. So equality goes by
// NOCASE over the text without its trailing blanks, and so do the indexes; only an order takes ts_order.
//
//   fnumber='A01'         (rtrim("tblItem"."fnumber") COLLATE NOCASE = ?1)      an index serves it
//   fnumber>'A01'         (rtrim("tblItem"."fnumber") COLLATE ts_order > ?1)
//   fnumber like 'A0%'    bounds that an index serves, and the match itself: see like()
//
// A decimal of more than 15 digits may be a text (sqlite_decimal.h), which SQLite puts behind all numbers. What is
// equal is the same text, so that only an order needs a key:
//
//   fprice=5              ("tblItem"."fprice" = ?1)
//   fprice>fcost          (ts_deckey("tblItem"."fprice", 18, 4) > ts_deckey("tblItem"."fcost", 18, 4))
//   fprice>5              (p > ?1 AND (p < '' OR ts_deckey(p, 18, 4) > ts_deckey(?1, 18, 4))), p for the column
//
// In the last the key is asked for texts alone, and an index serves the rest.
#include "store/tsql/sqlite_emitter.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {
namespace {

constexpr const char* kCollation = " COLLATE NOCASE";
constexpr const char* kOrder = " COLLATE ts_order";

}  // namespace

/// One side of a comparison; the left one has the collation, which decides.
std::string SqliteEmitter::comparable(const Expression& expression, Collation collation, Side side,
                                      const Type& common) {
    if (!expression.type.isText()) {
        return comparedNumber(value(expression), expression.type, collation, common);
    }
    // Another program that reads a view doesn't know ts_order.
    const bool order = collation == Collation::order && !stored_;
    const char* suffix = side == Side::right ? "" : order ? kOrder : kCollation;
    if (expression.kind == ExpressionKind::literal) {
        return literal(expression, expression.type, Parameter::Use::trimmed) + suffix;
    }
    return "rtrim(" + value(expression) + ")" + suffix;
}

const char* SqliteEmitter::orderCollation() const { return stored_ ? kCollation : kOrder; }

std::string SqliteEmitter::equalityForm(const std::string& text) const { return "rtrim(" + text + ")" + kCollation; }

std::string SqliteEmitter::orderForm(const std::string& text, const Type& type) const {
    return type.isText() ? "rtrim(" + text + ")" + orderCollation()
                         : comparedNumber(text, type, Collation::order, type);
}

std::string SqliteEmitter::comparedName(const std::string& name, const Type& type, Collation collation,
                                        const Type& common) const {
    return type.isText() ? "rtrim(" + name + ")" : comparedNumber(name, type, collation, common);
}

/// A column that may hold such texts, beside a number that is none.
bool SqliteEmitter::comparesByNumber(const Expression& left, const Expression& right) const {
    return !stored_ && left.kind == ExpressionKind::column && left.type.isWideDecimal() && right.type.isNumber() &&
           !right.type.isFloat() && !right.type.isWideDecimal();
}

std::string SqliteEmitter::ordered(const Expression& column, Operator op, const Expression& number) {
    const Type common = commonType(column.type, number.type);
    const std::string left = value(column);
    const std::string right = value(number);
    const std::string sign = " " + std::string(spelling(op)) + " ";
    const std::string plain = left + sign + right;
    const std::string keys = comparedNumber(left, column.type, Collation::order, common) + sign +
                             comparedNumber(right, number.type, Collation::order, common);
    const bool above = op == Operator::greater || op == Operator::greaterEqual;
    return above ? "(" + plain + " AND (" + left + " < '' OR " + keys + "))"
                 : "(" + plain + " OR (" + left + " >= '' AND " + keys + "))";
}

std::string SqliteEmitter::comparison(const Expression& expression) {
    const Expression& left = *expression.operands[0];
    const Expression& right = *expression.operands[1];
    return isOrdering(expression.op) && comparesByNumber(left, right) ? ordered(left, expression.op, right)
                                                                      : Emitter::comparison(expression);
}

std::string SqliteEmitter::between(const Expression& expression) {
    const auto& operands = expression.operands;
    if (!comparesByNumber(*operands[0], *operands[1]) || !comparesByNumber(*operands[0], *operands[2])) {
        return Emitter::between(expression);
    }
    const std::string within = ordered(*operands[0], Operator::greaterEqual, *operands[1]) + " AND " +
                               ordered(*operands[0], Operator::lessEqual, *operands[2]);
    return expression.negated ? "(NOT (" + within + "))" : "(" + within + ")";
}

std::string SqliteEmitter::comparedNumber(const std::string& text, const Type& type, Collation collation,
                                          const Type& common) const {
    if (common.isFloat() && type.isWideDecimal()) {
        return "CAST(" + text + " AS REAL)";
    }
    if (collation != Collation::order || !common.isWideDecimal()) {
        return text;
    }
    if (stored_) {
        // Another program has no keys; a sum is a number, of 15 digits.
        return type.isWideDecimal() ? "(" + text + " + 0)" : text;
    }
    // Money is a 64-bit number of ten-thousandths.
    constexpr int kOfMoney = 18;
    const int precision = common.kind == Kind::decimal ? common.precision : kOfMoney;
    return "ts_deckey(" + text + ", " + std::to_string(precision) + ", " + std::to_string(common.scale) + ")";
}

std::string SqliteEmitter::like(const Expression& expression) {
    if (stored_) {
        const std::string plain = storedLike(expression);
        if (!plain.empty()) {
            return plain;
        }
    }
    const Expression& text = *expression.operands[0];
    const std::string negation = expression.negated ? "NOT " : "";
    const std::string match = negation + "ts_like(" + arguments(expression) + ")";
    if (stored_ || inline_ || !mayUseIndex(expression)) {
        return "(" + match + ")";
    }
    // The first bound says nothing that the others don't; but a bare column in it lets SQLite see that a row
    // which an outer join filled with nulls never passes, and turn the join into an inner one.
    return "(" + value(text) + " >= '' AND " + likeBounds(expression) + " AND " + match + ")";
}

std::string SqliteEmitter::likeBounds(const Expression& expression) {
    const Expression& pattern = *expression.operands[1];
    const std::string key = groupKey(*expression.operands[0]);
    const std::string low = literal(pattern, pattern.type, Parameter::Use::likeLow);
    const std::string high = literal(pattern, pattern.type, Parameter::Use::likeHigh);
    return key + " >= " + low + " AND " + key + " < " + high;
}

}  // namespace orvenmod::store::tsql
