// Binds expressions, from the leaves up: a node's type follows from its operands', and where these don't fit, a
// conversion comes between.
//
// Of two sides of different classes the one of lower precedence is converted, also where that is the column:
//
//   fitemid='5'     the literal becomes 5
//   fnumber=5       each fnumber becomes a number; the first row with 'A01' fails with 245
#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {
namespace {

void requireOneColumn(const Query& query) {
    if (query.columns.size() != 1) {
        throw Error(kSubqueryColumns);
    }
}

void refuseOrder(const Query& query) {
    if (!query.orderBy.empty() && !(query.select && query.select->top)) {
        throw Error(kOrderWithoutTop);
    }
}

}  // namespace

bool isCondition(const Expression& expression) {
    switch (expression.kind) {
        case ExpressionKind::comparison:
        case ExpressionKind::logical:
        case ExpressionKind::like:
        case ExpressionKind::inList:
        case ExpressionKind::inQuery:
        case ExpressionKind::between:
        case ExpressionKind::isNull:
        case ExpressionKind::exists:
        case ExpressionKind::quantified:
            return true;
        default:
            return false;
    }
}

void Binder::bindCondition(ExpressionPtr& pointer, const Scope& scope) {
    Expression& expression = *pointer;
    switch (expression.kind) {
        case ExpressionKind::logical:
            for (ExpressionPtr& operand : expression.operands) {
                bindCondition(operand, scope);
            }
            break;
        case ExpressionKind::comparison:
            bindComparison(expression, scope);
            break;
        case ExpressionKind::like:
            bindLike(expression, scope);
            break;
        case ExpressionKind::inList:
            bindInList(expression, scope);
            break;
        case ExpressionKind::inQuery:
        case ExpressionKind::quantified:
            bindInQuery(expression, scope);
            break;
        case ExpressionKind::between:
            bindBetween(expression, scope);
            break;
        case ExpressionKind::isNull:
            bindValue(expression.operands[0], scope);
            break;
        case ExpressionKind::exists:
            refuseOrder(*expression.query);
            bindQuery(*expression.query, &scope);
            break;
        default:
            throw Error(kConditionExpected, {expression.name});
    }
    expression.type = typeOf(Kind::bit);
}

void Binder::bindValue(ExpressionPtr& pointer, const Scope& scope) {
    Expression& expression = *pointer;
    switch (expression.kind) {
        case ExpressionKind::literal:
            expression.type = literalType(expression);
            break;
        case ExpressionKind::null:
            break;
        case ExpressionKind::column:
            bindColumn(expression, scope);
            break;
        case ExpressionKind::unary:
            bindUnary(expression, scope);
            break;
        case ExpressionKind::arithmetic:
            bindArithmetic(expression, scope);
            break;
        case ExpressionKind::caseWhen:
            bindCase(expression, scope);
            break;
        case ExpressionKind::cast:
            bindCast(expression, scope);
            break;
        case ExpressionKind::subquery:
            bindSubquery(expression, scope);
            break;
        case ExpressionKind::function:
            bindFunction(pointer, scope);
            break;
        default:
            throw Error(kSyntaxNear, {expression.op == Operator::none ? "is" : spelling(expression.op)});
    }
}

void Binder::bindColumn(Expression& expression, const Scope& scope) {
    // The nearest query that has the name has it; one around it is asked only then, which correlates the two.
    bool known = false;
    for (const Scope* at = &scope; at != nullptr; at = at->parent) {
        for (const Source* source : at->sources) {
            if (!expression.qualifier.empty() && !sameName(source->exposedName(), expression.qualifier)) {
                continue;
            }
            known = true;
            for (std::size_t i = 0; i < source->columns.size(); ++i) {
                if (!sameName(source->columns[i].name, expression.name)) {
                    continue;
                }
                // Two sources of one query.
                if (expression.source != nullptr) {
                    throw Error(kAmbiguousColumn, {expression.name});
                }
                expression.source = source;
                expression.column = static_cast<int>(i);
                expression.type = source->columns[i].type;
            }
        }
        if (expression.source != nullptr) {
            return;
        }
        // A source of that name hides one of the same name further out, even where it lacks the column.
        if (known && !expression.qualifier.empty()) {
            break;
        }
    }
    if (!expression.qualifier.empty() && !known) {
        throw Error(kUnboundIdentifier, {expression.qualifier + "." + expression.name});
    }
    throw Error(kUnknownColumn, {expression.name});
}

void Binder::bindUnary(Expression& expression, const Scope& scope) {
    ExpressionPtr& operand = expression.operands[0];
    bindValue(operand, scope);
    const Type& type = operand->type;
    if (type.isNull()) {
        operand->type = typeOf(Kind::integer);
    } else if (expression.op == Operator::bitNot && !type.isInteger()) {
        throw Error(kOperandType, {std::string(typeName(type.kind)), "~"});
    } else if (expression.op == Operator::negate && (!type.isNumber() || type.kind == Kind::bit)) {
        throw Error(kOperandType, {std::string(typeName(type.kind)), "minus"});
    }
    expression.type = operand->type;
    // A tinyint has no sign.
    if (expression.op == Operator::negate && type.kind == Kind::tinyint) {
        expression.type = typeOf(Kind::smallint);
    }
}

void Binder::bindArithmetic(Expression& expression, const Scope& scope) {
    ExpressionPtr& left = expression.operands[0];
    ExpressionPtr& right = expression.operands[1];
    bindValue(left, scope);
    bindValue(right, scope);
    expression.type = arithmeticType(expression.op, operandType(*left, right->type), operandType(*right, left->type));
    const Type common = expression.type;
    for (ExpressionPtr* side : {&left, &right}) {
        const ExpressionPtr& other = side == &left ? right : left;
        if ((*side)->type.isNull()) {
            (*side)->type = other->type.isNull() ? common : other->type;
        } else if (common.isNumber() && !(*side)->type.isNumber()) {
            // A text takes the other side's own type and not the result's, which has more digits: '1.55' beside a
            // decimal(5,1) is 1.6 before anything is added. A bit doesn't calculate.
            coerce(*side, other->type.isNumber() ? (other->type.kind == Kind::bit ? typeOf(Kind::integer) : other->type)
                                                 : common);
        } else if (common.isDate() && (*side)->type.isText()) {
            coerce(*side, common);
        }
    }
}

void Binder::bindComparison(Expression& expression, const Scope& scope) {
    bindValue(expression.operands[0], scope);
    bindValue(expression.operands[1], scope);
    coercePair(expression.operands[0], expression.operands[1], spelling(expression.op));
}

void Binder::bindLike(Expression& expression, const Scope& scope) {
    for (ExpressionPtr& operand : expression.operands) {
        bindValue(operand, scope);
        coerce(operand, textOf(operand->type));
    }
}

void Binder::bindInList(Expression& expression, const Scope& scope) {
    Type common;
    for (ExpressionPtr& operand : expression.operands) {
        bindValue(operand, scope);
        common = commonType(common, operand->type);
    }
    for (ExpressionPtr& operand : expression.operands) {
        if (classOf(operand->type) != classOf(common)) {
            coerce(operand, common);
        }
    }
}

void Binder::bindInQuery(Expression& expression, const Scope& scope) {
    ExpressionPtr& value = expression.operands[0];
    bindValue(value, scope);
    refuseOrder(*expression.query);
    bindQuery(*expression.query, &scope);
    requireOneColumn(*expression.query);
    const Type& column = expression.query->columns[0].type;
    const Type common = commonType(value->type, column);
    if (classOf(value->type) != classOf(common)) {
        coerce(value, common);
    }
    if (classOf(column) != classOf(common)) {
        coerceColumn(*expression.query, 0, common);
    }
}

void Binder::bindBetween(Expression& expression, const Scope& scope) { bindInList(expression, scope); }

void Binder::bindCase(Expression& expression, const Scope& scope) {
    // Conditions and values take turns; an odd one at the end is else.
    Type common;
    for (std::size_t i = 0; i < expression.operands.size(); ++i) {
        ExpressionPtr& operand = expression.operands[i];
        const bool condition = i % 2 == 0 && i + 1 < expression.operands.size();
        if (condition) {
            bindCondition(operand, scope);
        } else if (operand) {
            bindValue(operand, scope);
            common = commonType(common, operand->type);
        }
    }
    if (common.isNull()) {
        throw Error(kCaseOfNulls);
    }
    for (std::size_t i = 0; i < expression.operands.size(); ++i) {
        const bool condition = i % 2 == 0 && i + 1 < expression.operands.size();
        if (!condition && expression.operands[i]) {
            coerce(expression.operands[i], common);
        }
    }
    expression.type = common;
}

void Binder::bindCast(Expression& expression, const Scope& scope) {
    bindValue(expression.operands[0], scope);
    checkExplicit(expression.operands[0]->type, expression.target);
    if (expression.operands.size() > 1) {
        bindValue(expression.operands[1], scope);
        if (!expression.operands[1]->type.isInteger()) {
            throw Error(kArgumentType, {std::string(typeName(expression.operands[1]->type.kind)), "3", "convert"});
        }
    }
    expression.type = expression.target;
}

void Binder::bindSubquery(Expression& expression, const Scope& scope) {
    bindQuery(*expression.query, &scope);
    requireOneColumn(*expression.query);
    refuseOrder(*expression.query);
    expression.type = expression.query->columns[0].type;
}

}  // namespace orvenmod::store::tsql
