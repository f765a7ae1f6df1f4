#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {
namespace {

constexpr const char* kCollation = " COLLATE NOCASE";

}  // namespace

std::string SqliteEmitter::comparison(const Expression& expression) {
    return "(" + comparable(*expression.operands[0], true) + " " + spelling(expression.op) + " " +
           comparable(*expression.operands[1], false) + ")";
}

/// One side of a comparison. `collated` for the left side, whose collation decides.
std::string SqliteEmitter::comparable(const Expression& expression, bool collated) {
    if (!expression.type.isText()) {
        return value(expression);
    }
    const char* collation = collated ? kCollation : "";
    if (expression.kind == ExpressionKind::literal) {
        return literal(expression, expression.type, Parameter::Use::trimmed) + collation;
    }
    return "rtrim(" + value(expression) + ")" + collation;
}

/// What rows are ordered and grouped by.
std::string SqliteEmitter::sortKey(const Expression& expression) {
    return expression.type.isText() ? "rtrim(" + value(expression) + ")" + kCollation : value(expression);
}

/// A pattern with a plain beginning bounds the texts that can match it, and an index serves the bounds.
bool SqliteEmitter::mayUseIndex(const Expression& like) const {
    const Expression& pattern = *like.operands[1];
    if (like.negated || like.operands.size() > 2 || like.operands[0]->kind != ExpressionKind::column ||
        pattern.kind != ExpressionKind::literal) {
        return false;
    }
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
    const std::string key = sortKey(text);
    return "(" + column + " >= '' AND " + key + " >= " + literal(pattern, pattern.type, Parameter::Use::likeLow) +
           " AND " + key + " < " + literal(pattern, pattern.type, Parameter::Use::likeHigh) + " AND " + match + ")";
}

std::string SqliteEmitter::inList(const Expression& expression) {
    std::string members;
    for (std::size_t i = 1; i < expression.operands.size(); ++i) {
        members += (i == 1 ? "" : ", ") + comparable(*expression.operands[i], false);
    }
    return "(" + comparable(*expression.operands[0], true) + (expression.negated ? " NOT IN (" : " IN (") + members +
           "))";
}

std::string SqliteEmitter::quantified(const Expression& expression) {
    const std::string left = comparable(*expression.operands[0], true);
    if (!expression.all && expression.op == Operator::equal) {
        return "(" + left + " IN (" + comparableQuery(*expression.query) + "))";
    }
    const Names names = {"c1"};
    const std::string rows = "(" + query(*expression.query, &names) + ") AS \"orven.q\"";
    const bool text = expression.query->columns[0].type.isText();
    const std::string right = text ? "rtrim(\"orven.q\".\"c1\")" : "\"orven.q\".\"c1\"";
    const std::string match = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    return expression.all ? "(NOT EXISTS (SELECT 1 FROM " + rows + " WHERE " + match + " IS NOT TRUE))"
                          : "EXISTS (SELECT 1 FROM " + rows + " WHERE " + match + ")";
}

}  // namespace orvenmod::store::tsql
