// Comparisons of texts, by two collations.
//
// On the server one collation does everything: 'abc ' equals 'ABC', and Chinese sorts by its sound. The second needs a
// collation of our own, and an index in it would make the table unusable for every other program. So equality goes by
// NOCASE over the text without its trailing blanks, and so do the indexes; only an order takes ts_order.
//
//   fnumber='A01'         (rtrim("tblItem"."fnumber") COLLATE NOCASE = ?1)      an index serves it
//   fnumber>'A01'         (rtrim("tblItem"."fnumber") COLLATE ts_order > ?1)
//   fnumber like 'A0%'    bounds that an index serves, and the match itself: see like()
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {
namespace {

constexpr const char* kCollation = " COLLATE NOCASE";
constexpr const char* kOrder = " COLLATE ts_order";

bool isOrdering(Operator op) {
    return op == Operator::less || op == Operator::lessEqual || op == Operator::greater || op == Operator::greaterEqual;
}

}  // namespace

std::string SqliteEmitter::comparison(const Expression& expression) {
    const Collation collation = isOrdering(expression.op) ? Collation::order : Collation::equality;
    const std::string left = comparable(*expression.operands[0], collation);
    const std::string right = comparable(*expression.operands[1], Collation::none);
    return "(" + left + " " + spelling(expression.op) + " " + right + ")";
}

/// One side of a comparison; the left one has the collation, which decides.
std::string SqliteEmitter::comparable(const Expression& expression, Collation collation) {
    if (!expression.type.isText()) {
        return value(expression);
    }
    // Another program that reads a view doesn't know ts_order.
    const bool order = collation == Collation::order && !stored_;
    const char* suffix = collation == Collation::none ? "" : order ? kOrder : kCollation;
    if (expression.kind == ExpressionKind::literal) {
        return literal(expression, expression.type, Parameter::Use::trimmed) + suffix;
    }
    return "rtrim(" + value(expression) + ")" + suffix;
}

/// What rows are grouped by.
std::string SqliteEmitter::groupKey(const Expression& expression) {
    return expression.type.isText() ? "rtrim(" + value(expression) + ")" + kCollation : value(expression);
}

/// What rows are ordered by.
std::string SqliteEmitter::sortKey(const Expression& expression) {
    return expression.type.isText() ? "rtrim(" + value(expression) + ")" + orderCollation() : value(expression);
}

const char* SqliteEmitter::orderCollation() const { return stored_ ? kCollation : kOrder; }

/// A pattern with a plain beginning bounds the texts that can match it, and an index serves the bounds.
bool SqliteEmitter::mayUseIndex(const Expression& like) const {
    const Expression& pattern = *like.operands[1];
    if (like.negated || like.operands.size() > 2 || like.operands[0]->kind != ExpressionKind::column ||
        pattern.kind != ExpressionKind::literal) {
        return false;
    }
    // The value may be asked for: a pattern that begins with a wildcard has a shape of its own.
    const std::string_view text = literals_[static_cast<std::size_t>(pattern.literal)].text;
    return text.empty() || std::string_view("%_[").find(text[0]) == std::string_view::npos;
}

std::string SqliteEmitter::like(const Expression& expression) {
    if (stored_) {
        const std::string plain = storedLike(expression);
        if (!plain.empty()) {
            return plain;
        }
    }
    const Expression& text = *expression.operands[0];
    const Expression& pattern = *expression.operands[1];
    const std::string negation = expression.negated ? "NOT " : "";
    const std::string match = negation + "ts_like(" + arguments(expression) + ")";
    if (stored_ || inline_ || !mayUseIndex(expression)) {
        return "(" + match + ")";
    }
    // The first bound says nothing that the others don't; but a bare column in it lets SQLite see that a row
    // which an outer join filled with nulls never passes, and turn the join into an inner one.
    const std::string column = value(text);
    const std::string key = groupKey(text);
    const std::string low = literal(pattern, pattern.type, Parameter::Use::likeLow);
    const std::string high = literal(pattern, pattern.type, Parameter::Use::likeHigh);
    return "(" + column + " >= '' AND " + key + " >= " + low + " AND " + key + " < " + high + " AND " + match + ")";
}

std::string SqliteEmitter::inList(const Expression& expression) {
    std::string text = "(" + comparable(*expression.operands[0], Collation::equality);
    text += expression.negated ? " NOT IN (" : " IN (";
    for (std::size_t i = 1; i < expression.operands.size(); ++i) {
        text += (i == 1 ? "" : ", ") + comparable(*expression.operands[i], Collation::none);
    }
    return text + "))";
}

std::string SqliteEmitter::quantified(const Expression& expression) {
    const Collation collation = isOrdering(expression.op) ? Collation::order : Collation::equality;
    const std::string left = comparable(*expression.operands[0], collation);
    // "= any" is "in".
    if (!expression.all && expression.op == Operator::equal) {
        return "(" + left + " IN (" + comparableQuery(*expression.query) + "))";
    }
    const Names names = {"c1"};
    const std::string rows = "(" + query(*expression.query, &names) + ") AS \"orven.q\"";
    const bool text = expression.query->columns[0].type.isText();
    const std::string right = text ? "rtrim(\"orven.q\".\"c1\")" : "\"orven.q\".\"c1\"";
    const std::string match = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    // "all" fails by one row that compares as false, and as well by one that compares as unknown.
    return expression.all ? "(NOT EXISTS (SELECT 1 FROM " + rows + " WHERE " + match + " IS NOT TRUE))"
                          : "EXISTS (SELECT 1 FROM " + rows + " WHERE " + match + ")";
}

}  // namespace orvenmod::store::tsql
