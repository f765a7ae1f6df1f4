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

}  // namespace

/// One side of a comparison; the left one has the collation, which decides.
std::string SqliteEmitter::comparable(const Expression& expression, Collation collation, Side side) {
    if (!expression.type.isText()) {
        return value(expression);
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

std::string SqliteEmitter::orderForm(const std::string& text) const { return "rtrim(" + text + ")" + orderCollation(); }

std::string SqliteEmitter::comparedName(const std::string& name, Collation) const { return "rtrim(" + name + ")"; }

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

}  // namespace orvenmod::store::tsql
