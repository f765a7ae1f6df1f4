// Values and conditions. A comparison writes texts in the form in which equal ones are the same, or in the one by which
// they are ordered; everything else is written as it is.
//
//   fname='A' and fid<9    ((<form of "t"."fname"> = ?1) AND ("t"."fid" < ?2))
#include "store/tsql/emitter.h"
#include "store/tsql/error.h"

namespace orvenmod::store::tsql {

bool isOrdering(Operator op) {
    return op == Operator::less || op == Operator::lessEqual || op == Operator::greater || op == Operator::greaterEqual;
}

std::string Emitter::value(const Expression& expression) {
    switch (expression.kind) {
        case ExpressionKind::literal:
            return literal(expression, expression.type);
        case ExpressionKind::null:
            return nullText(expression.type);
        case ExpressionKind::column:
            return column(expression);
        case ExpressionKind::unary:
            return unary(expression);
        case ExpressionKind::arithmetic:
            return arithmetic(expression);
        case ExpressionKind::caseWhen:
            return caseWhen(expression);
        case ExpressionKind::function:
            return function(expression);
        case ExpressionKind::cast:
        case ExpressionKind::conversion:
            return conversion(expression);
        case ExpressionKind::subquery:
            return scalarQuery(*expression.query);
        default:
            return condition(expression);
    }
}

std::string Emitter::condition(const Expression& expression) {
    const auto& operands = expression.operands;
    const std::string negation = expression.negated ? "NOT " : "";
    switch (expression.kind) {
        case ExpressionKind::logical: {
            const std::string left = condition(*operands[0]);
            if (expression.op == Operator::logicalNot) {
                return "(NOT " + left + ")";
            }
            const std::string right = condition(*operands[1]);
            return "(" + left + (expression.op == Operator::logicalAnd ? " AND " : " OR ") + right + ")";
        }
        case ExpressionKind::comparison:
            return comparison(expression);
        case ExpressionKind::like:
            return like(expression);
        case ExpressionKind::inList:
            return inList(expression);
        case ExpressionKind::inQuery: {
            const std::string left = comparable(*operands[0], Collation::equality, Side::left);
            return "(" + left + " " + negation + "IN (" + comparableQuery(*expression.query) + "))";
        }
        case ExpressionKind::between: {
            const std::string middle = comparable(*operands[0], Collation::order, Side::left);
            const std::string low = comparable(*operands[1], Collation::order, Side::right);
            const std::string high = comparable(*operands[2], Collation::order, Side::right);
            return "(" + middle + " " + negation + "BETWEEN " + low + " AND " + high + ")";
        }
        case ExpressionKind::isNull:
            return "(" + value(*operands[0]) + " IS " + negation + "NULL)";
        case ExpressionKind::exists:
            return "EXISTS (" + query(*expression.query) + ")";
        case ExpressionKind::quantified:
            return quantified(expression);
        default:
            throw Error(kConditionExpected, {expression.name});
    }
}

std::string Emitter::column(const Expression& expression) {
    const ColumnInfo& column = expression.source->columns[static_cast<std::size_t>(expression.column)];
    return (bareColumns_ ? "" : quoteName(aliasOf(*expression.source)) + ".") +
           (expression.source->kind == Source::Kind::derived ? quoteName(column.name) : columnName(column));
}

std::string Emitter::arithmetic(const Expression& expression) {
    const Type& type = expression.type;
    if (type.isDate()) {
        return dateArithmetic(expression);
    }
    const std::string left = value(*expression.operands[0]);
    const std::string right = value(*expression.operands[1]);
    if (type.isText() || type.isBinary()) {
        return "(" + left + " || " + right + ")";
    }
    if (type.isFloat()) {
        return floatArithmetic(expression, left, right);
    }
    return type.isInteger() ? integerArithmetic(expression, left, right) : decimalArithmetic(expression, left, right);
}

std::string Emitter::caseWhen(const Expression& expression) {
    const auto& operands = expression.operands;
    // A branch may never be taken, so that a literal in it must not fail when the statement is bound.
    std::string text = "CASE";
    for (std::size_t i = 0; i + 1 < operands.size(); i += 2) {
        text += " WHEN " + condition(*operands[i]);
        ++conditional_;
        text += " THEN " + value(*operands[i + 1]);
        --conditional_;
    }
    if (operands.back()) {
        ++conditional_;
        text += " ELSE " + value(*operands.back());
        --conditional_;
    }
    return text + " END";
}

std::string Emitter::unary(const Expression& expression) {
    const std::string operand = value(*expression.operands[0]);
    switch (expression.op) {
        case Operator::negate:
            return "(- " + operand + ")";
        case Operator::bitNot:
            return expression.type.kind == Kind::bit ? "(1 - " + operand + ")" : "(~ " + operand + ")";
        default:
            return operand;
    }
}

std::string Emitter::arguments(const Expression& call) {
    std::string text;
    for (const ExpressionPtr& operand : call.operands) {
        text += (text.empty() ? "" : ", ") + value(*operand);
    }
    return text;
}

std::string Emitter::comparison(const Expression& expression) {
    const Collation collation = isOrdering(expression.op) ? Collation::order : Collation::equality;
    const std::string left = comparable(*expression.operands[0], collation, Side::left);
    const std::string right = comparable(*expression.operands[1], collation, Side::right);
    return "(" + left + " " + spelling(expression.op) + " " + right + ")";
}

/// What rows are grouped by.
std::string Emitter::groupKey(const Expression& expression) {
    return expression.type.isText() ? equalityForm(value(expression)) : value(expression);
}

/// What rows are ordered by.
std::string Emitter::sortKey(const Expression& expression) {
    return expression.type.isText() ? orderForm(value(expression)) : value(expression);
}

/// A pattern with a plain beginning bounds the texts that can match it, and an index serves the bounds.
bool Emitter::mayUseIndex(const Expression& like) const {
    const Expression& pattern = *like.operands[1];
    if (like.negated || like.operands.size() > 2 || like.operands[0]->kind != ExpressionKind::column ||
        pattern.kind != ExpressionKind::literal) {
        return false;
    }
    // The value may be asked for: a pattern that begins with a wildcard has a shape of its own.
    const std::string_view text = literalOf(pattern).text;
    return text.empty() || std::string_view("%_[").find(text[0]) == std::string_view::npos;
}

std::string Emitter::inList(const Expression& expression) {
    std::string text = "(" + comparable(*expression.operands[0], Collation::equality, Side::left);
    text += expression.negated ? " NOT IN (" : " IN (";
    for (std::size_t i = 1; i < expression.operands.size(); ++i) {
        text += (i == 1 ? "" : ", ") + comparable(*expression.operands[i], Collation::equality, Side::right);
    }
    return text + "))";
}

std::string Emitter::quantified(const Expression& expression) {
    const Collation collation = isOrdering(expression.op) ? Collation::order : Collation::equality;
    const std::string left = comparable(*expression.operands[0], collation, Side::left);
    // "= any" is "in".
    if (!expression.all && expression.op == Operator::equal) {
        return "(" + left + " IN (" + comparableQuery(*expression.query) + "))";
    }
    const Names names = {"c1"};
    const std::string rows = "(" + query(*expression.query, &names) + ") AS \"orven.q\"";
    const bool text = expression.query->columns[0].type.isText();
    const std::string right = text ? comparedName("\"orven.q\".\"c1\"", collation) : "\"orven.q\".\"c1\"";
    const std::string match = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    // "all" fails by one row that compares as false, and as well by one that compares as unknown.
    return expression.all ? "(NOT EXISTS (SELECT 1 FROM " + rows + " WHERE " + match + " IS NOT TRUE))"
                          : "EXISTS (SELECT 1 FROM " + rows + " WHERE " + match + ")";
}

std::string Emitter::sharedFunction(const Expression& call, const char* isnull) {
    const std::string& name = call.name;
    // The later arguments are looked at only where the first is null, and a literal among them is converted then.
    if (name == "isnull" || name == "coalesce") {
        std::string text = value(*call.operands[0]);
        ++conditional_;
        for (std::size_t i = 1; i < call.operands.size(); ++i) {
            text += ", " + value(*call.operands[i]);
        }
        --conditional_;
        return call.operands.size() == 1 ? text : (name == "isnull" ? isnull : "coalesce") + ("(" + text) + ")";
    }
    if (name == "choose") {
        std::string text = "CASE " + value(*call.operands[0]);
        ++conditional_;
        for (std::size_t i = 1; i < call.operands.size(); ++i) {
            text += " WHEN " + std::to_string(i) + " THEN " + value(*call.operands[i]);
        }
        --conditional_;
        return text + " END";
    }
    return name == "len" ? "length(rtrim(" + arguments(call) + "))" : "";
}

}  // namespace orvenmod::store::tsql
