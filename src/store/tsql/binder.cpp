#include "store/tsql/binder.h"

#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {

void Binder::bind(Statement& statement) {
    std::visit([this](auto& specific) { bindStatement(specific); }, statement);
}

void Binder::bindStatement(QueryStatement& statement) {
    const Query& query = *statement.query;
    if (query.select && !query.select->into.empty()) {
        // The types become columns of the new table.
        useExactLengths();
        if (catalog_.find(query.select->into) != nullptr) {
            throw Error(kObjectExists, {query.select->into});
        }
    }
    bindQuery(*statement.query, nullptr);
}

void Binder::coerce(ExpressionPtr& expression, const Type& type) {
    if (expression->type == type || type.isNull()) {
        return;
    }
    // The bare word null has no value to convert.
    if (expression->kind == ExpressionKind::null) {
        expression->type = type;
        return;
    }
    checkImplicit(expression->type, type);
    ExpressionPtr conversion = makeExpression(ExpressionKind::conversion);
    conversion->type = type;
    conversion->operands.push_back(std::move(expression));
    expression = std::move(conversion);
}

void Binder::coercePair(ExpressionPtr& left, ExpressionPtr& right, const char* op) {
    const auto large = [](const Type& type) {
        return type.kind == Kind::text || type.kind == Kind::ntext || type.kind == Kind::image;
    };
    // A time of a day and a date have nothing to compare.
    const bool timeAndDate = left->type.isDate() && right->type.isDate() &&
                             (left->type.kind == Kind::time) != (right->type.kind == Kind::time);
    if (large(left->type) || large(right->type) || timeAndDate) {
        throw Error(kOperandTypes,
                    {std::string(typeName(left->type.kind)), std::string(typeName(right->type.kind)), op});
    }
    const Type common = commonType(left->type, right->type);
    // Within a class nothing is converted: an int compares with a decimal, a char with a varchar as they are, and a
    // conversion over a column would keep its index from being used.
    for (ExpressionPtr* side : {&left, &right}) {
        if (classOf((*side)->type) != classOf(common)) {
            coerce(*side, common);
        }
    }
}

Type Binder::literalType(const Expression& literal) const {
    const Literal& value = literals_[static_cast<std::size_t>(literal.literal)];
    // A translation serves texts of every length, so that a text has the longest unless the statement is not shared.
    if (!exactLengths_ && value.kind == LiteralKind::text) {
        return textType(Kind::varchar, kMostVarchar);
    }
    if (!exactLengths_ && value.kind == LiteralKind::nationalText) {
        return textType(Kind::nvarchar, kMostNvarchar);
    }
    return value.type();
}

/// An operand's type beside a decimal: a whole literal has as many digits as it is written with. With fprice of
/// decimal(18,4), fprice/3 is decimal(20,6), while fprice/fitemid, whose int counts as ten digits, is decimal(29,15).
Type Binder::operandType(const Expression& operand, const Type& other) {
    if (operand.kind == ExpressionKind::literal && operand.type.kind == Kind::integer && other.kind == Kind::decimal) {
        fixed_.insert(operand.literal);
        return decimalType(literals_[static_cast<std::size_t>(operand.literal)].precision, 0);
    }
    return operand.type;
}

Type Binder::numberOf(const Type& type) const { return type.isNumber() ? type : typeOf(Kind::floating); }

const ObjectInfo& Binder::findTable(const std::string& name, int missing) const {
    const ObjectInfo* object = catalog_.find(name);
    if (object == nullptr) {
        throw Error(missing, {name});
    }
    return *object;
}

int Binder::columnOf(const ObjectInfo& object, const std::string& name) const {
    for (std::size_t i = 0; i < object.columns.size(); ++i) {
        if (sameName(object.columns[i].name, name)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace orvenmod::store::tsql
