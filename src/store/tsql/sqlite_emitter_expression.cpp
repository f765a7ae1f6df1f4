// Values and conditions.
//
// SQLite's numbers have no types: an int grows beyond its range, a decimal has no scale, and a division by zero is
// null. Where the server would fail or round, the shared way calls a function that does the same:
//
//   fitemid+1       ts_range(("tblItem"."fitemid" + ?1), 'int')               8115 beyond int
//   fprice/3        ts_decdiv("tblItem"."fprice", ?1, 20, 6)                  six decimals, 8134
//   fdate+1         ts_dateadd('day', (?1), "tblItem"."fdate")
//
// The stored way gives that up, so that the plain shell can read it: ("tblItem"."fprice" * 1.0 / 3).
#include "store/tsql/error.h"
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

std::string SqliteEmitter::value(const Expression& expression) {
    switch (expression.kind) {
        case ExpressionKind::literal:
            return literal(expression, expression.type);
        case ExpressionKind::null:
            return "NULL";
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

std::string SqliteEmitter::condition(const Expression& expression) {
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
            const std::string left = comparable(*operands[0], Collation::equality);
            return "(" + left + " " + negation + "IN (" + comparableQuery(*expression.query) + "))";
        }
        case ExpressionKind::between: {
            const std::string middle = comparable(*operands[0], Collation::order);
            const std::string low = comparable(*operands[1], Collation::none);
            const std::string high = comparable(*operands[2], Collation::none);
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

std::string SqliteEmitter::column(const Expression& expression) {
    const ColumnInfo& column = expression.source->columns[static_cast<std::size_t>(expression.column)];
    return (bareColumns_ ? "" : quoteName(aliasOf(*expression.source)) + ".") + quoteName(column.name);
}

std::string SqliteEmitter::arithmetic(const Expression& expression) {
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

std::string SqliteEmitter::integerArithmetic(const Expression& expression, const std::string& left,
                                             const std::string& right) {
    const std::string plain = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    switch (expression.op) {
        case Operator::divide:
            return stored_ ? plain : "ts_idiv(" + left + ", " + right + ")";
        case Operator::modulo:
            return stored_ ? plain : "ts_imod(" + left + ", " + right + ")";
        case Operator::bitAnd:
        case Operator::bitOr:
            return plain;
        // SQLite has no sign for it.
        case Operator::bitXor:
            return "((" + left + " | " + right + ") - (" + left + " & " + right + "))";
        default:
            return stored_ ? plain : "ts_range(" + plain + ", " + quoteText(printType(expression.type)) + ")";
    }
}

std::string SqliteEmitter::decimalArithmetic(const Expression& expression, const std::string& left,
                                             const std::string& right) {
    const std::string plain = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    const std::string size =
        ", " + std::to_string(expression.type.precision) + ", " + std::to_string(expression.type.scale) + ")";
    switch (expression.op) {
        case Operator::divide:
            // Two decimals that are whole are integers to SQLite, which would divide them as such.
            return stored_ ? "(" + left + " * 1.0 / " + right + ")" : "ts_decdiv(" + left + ", " + right + size;
        case Operator::modulo:
            return "ts_decmod(" + left + ", " + right + ")";
        default:
            return stored_ ? plain : "ts_decimal(" + plain + size;
    }
}

std::string SqliteEmitter::floatArithmetic(const Expression& expression, const std::string& left,
                                           const std::string& right) {
    if (expression.op == Operator::divide) {
        return stored_ ? "(" + left + " * 1.0 / " + right + ")" : "ts_div(" + left + ", " + right + ")";
    }
    return "(" + left + " " + spelling(expression.op) + " " + right + ")";
}

/// A date and whole days go through dateadd, anything else through the days since 1900 as a float.
std::string SqliteEmitter::dateArithmetic(const Expression& expression) {
    const Expression& left = *expression.operands[0];
    const Expression& right = *expression.operands[1];
    const bool minus = expression.op == Operator::subtract;
    if (left.type.isDate() && right.type.isInteger()) {
        return "ts_dateadd('day', " + std::string(minus ? "-" : "") + "(" + value(right) + "), " + value(left) + ")";
    }
    if (right.type.isDate() && left.type.isInteger() && !minus) {
        return "ts_dateadd('day', " + value(left) + ", " + value(right) + ")";
    }
    const auto days = [this](const Expression& side) {
        return "ts_cast(" + value(side) + ", " + quoteText(printType(side.type)) + ", 'float')";
    };
    return "ts_cast((" + days(left) + (minus ? " - " : " + ") + days(right) + "), 'float', " +
           quoteText(printType(expression.type)) + ")";
}

std::string SqliteEmitter::unary(const Expression& expression) {
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

std::string SqliteEmitter::caseWhen(const Expression& expression) {
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

}  // namespace orvenmod::store::tsql
