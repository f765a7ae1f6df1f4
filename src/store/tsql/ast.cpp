#include "store/tsql/ast.h"

#include "store/tsql/error.h"

namespace orvenmod::store::tsql {

const char* spelling(Operator op) {
    switch (op) {
        case Operator::none:
            return "";
        case Operator::add:
        case Operator::plus:
            return "+";
        case Operator::subtract:
        case Operator::negate:
            return "-";
        case Operator::multiply:
            return "*";
        case Operator::divide:
            return "/";
        case Operator::modulo:
            return "%";
        case Operator::bitAnd:
            return "&";
        case Operator::bitOr:
            return "|";
        case Operator::bitXor:
            return "^";
        case Operator::bitNot:
            return "~";
        case Operator::equal:
            return "=";
        case Operator::notEqual:
            return "<>";
        case Operator::less:
            return "<";
        case Operator::lessEqual:
            return "<=";
        case Operator::greater:
            return ">";
        case Operator::greaterEqual:
            return ">=";
        case Operator::logicalAnd:
            return "and";
        case Operator::logicalOr:
            return "or";
        case Operator::logicalNot:
            return "not";
    }
    return "";
}

ExpressionPtr makeExpression(ExpressionKind kind) {
    auto expression = std::make_unique<Expression>();
    expression->kind = kind;
    return expression;
}

ExpressionPtr clone(const Expression& expression) {
    // Both copies would run it.
    if (expression.query) {
        throw Error(kNotSupported, {"a query as the operand of case, nullif or choose"});
    }
    auto copy = makeExpression(expression.kind);
    copy->op = expression.op;
    copy->name = expression.name;
    copy->qualifier = expression.qualifier;
    copy->part = expression.part;
    copy->literal = expression.literal;
    copy->negated = expression.negated;
    copy->distinct = expression.distinct;
    copy->star = expression.star;
    copy->all = expression.all;
    copy->attempt = expression.attempt;
    copy->target = expression.target;
    for (const ExpressionPtr& operand : expression.operands) {
        copy->operands.push_back(operand ? clone(*operand) : nullptr);
    }
    return copy;
}

}  // namespace orvenmod::store::tsql
