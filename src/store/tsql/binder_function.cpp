// Binds function calls.
//
// Most follow from their row in functiontable.cpp: how many arguments, what each is converted to, what comes out. Here
// stand those whose type depends on several arguments, and those that are written as something else.
//
//   left(fname,'3')         "ti": a text and an int, so that '3' becomes 3; the result is as long as fname
//   isnull(fnumber,0)       the first argument's type: 0 becomes '0'
//   coalesce(fnumber,0)     the type of highest precedence: fnumber becomes an int
//   nullif(fname,'')        case when fname='' then null else fname end
#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/functiontable.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {
namespace {

void requireCount(const Expression& call, std::size_t least, std::size_t most) {
    if (call.star || call.operands.size() < least || call.operands.size() > most) {
        throw Error(most == least || call.operands.size() < least ? kArgumentCount : kArgumentRange,
                    {call.name, std::to_string(least), std::to_string(most)});
    }
}

int lengthOf(const Type& type) { return type.isText() ? type.length : kMostVarchar; }

Type resultType(const FunctionInfo& function, const Expression& call) {
    bool national = false;
    for (const ExpressionPtr& operand : call.operands) {
        national = national || operand->type.isNationalText();
    }
    const Kind textKind = national ? Kind::nvarchar : Kind::varchar;
    switch (function.result) {
        case 't':
            return textType(textKind, lengthOf(call.operands[0]->type));
        case 'x':
            return textType(textKind, national ? kMostNvarchar : kMostVarchar);
        case 's':
            return textType(Kind::nvarchar, 258);
        case 'c':
            return textType(Kind::varchar, 1);
        case 'i':
            return typeOf(Kind::integer);
        case 'f':
            return typeOf(Kind::floating);
        case 'd':
            return typeOf(Kind::datetime);
        case 'D':
            return typeOf(Kind::date);
        case 'u':
            return typeOf(Kind::uniqueidentifier);
        default:
            break;
    }
    Type type = call.operands[0]->type;
    // Small integers calculate as int.
    if (type.kind == Kind::bit || type.kind == Kind::tinyint || type.kind == Kind::smallint) {
        type = typeOf(Kind::integer);
    }
    if (function.result == 'w' && type.kind == Kind::decimal) {
        type.scale = 0;
    }
    return type;
}

bool takesPart(std::string_view name) {
    return name == "dateadd" || name == "datediff" || name == "datepart" || name == "datename";
}

}  // namespace

void Binder::bindFunction(ExpressionPtr& pointer, const Scope& scope) {
    Expression& call = *pointer;
    if (isAggregate(call.name)) {
        bindAggregate(call, scope);
        return;
    }
    if (call.name == "nullif" || call.name == "iif") {
        rewriteAsCase(pointer);
        bindCase(*pointer, scope);
        return;
    }
    if (call.name == "isnull") {
        bindIsNull(call, scope);
        return;
    }
    if (call.name == "coalesce" || call.name == "choose") {
        bindCoalesce(call, scope);
        return;
    }
    const FunctionInfo* function = findFunction(call.name);
    if (function == nullptr) {
        throw Error(isRefusedFunction(call.name) ? kNotSupported : kUnknownFunction, {call.name});
    }
    // The part of a date is a word and no argument of the tree, but the message counts it.
    const std::size_t implied = takesPart(call.name) ? 1 : 0;
    const std::size_t count = call.operands.size();
    const bool tooMany = function->most >= 0 && count > static_cast<std::size_t>(function->most);
    if (call.star || call.distinct || tooMany || count < static_cast<std::size_t>(function->least)) {
        const int least = function->least + static_cast<int>(implied);
        const int most = function->most + static_cast<int>(implied);
        throw Error(least == most ? kArgumentCount : kArgumentRange,
                    {call.name, std::to_string(least), std::to_string(most)});
    }
    if (implied != 0) {
        const std::string_view part = datePart(call.part);
        if (part.empty()) {
            throw Error(kUnknownOption, {call.part, call.name});
        }
        call.part = part;
    }
    bindArguments(call, scope, function->arguments);
    call.type = resultType(*function, call);
    if (call.name == "dateadd" && call.operands[1]->type.isDate()) {
        call.type = call.operands[1]->type;
    }
}

void Binder::bindArguments(Expression& call, const Scope& scope, std::string_view arguments) {
    for (std::size_t i = 0; i < call.operands.size(); ++i) {
        ExpressionPtr& operand = call.operands[i];
        bindValue(operand, scope);
        const Type type = operand->type;
        switch (arguments[std::min(i, arguments.size() - 1)]) {
            case 't':
                coerce(operand, textOf(type));
                break;
            case 'i':
                if (!type.isInteger()) {
                    coerce(operand, typeOf(Kind::integer));
                }
                break;
            case 'f':
                if (!type.isNumber()) {
                    coerce(operand, typeOf(Kind::floating));
                }
                break;
            case 'n':
                if (type.isDate()) {
                    throw Error(kArgumentType, {std::string(typeName(type.kind)), std::to_string(i + 1), call.name});
                }
                coerce(operand, type.isNull() ? typeOf(Kind::integer) : numberOf(type));
                break;
            case 'd':
                if (!type.isDate()) {
                    coerce(operand, typeOf(Kind::datetime));
                }
                break;
            default:
                break;
        }
    }
}

void Binder::bindIsNull(Expression& call, const Scope& scope) {
    requireCount(call, 2, 2);
    ExpressionPtr& value = call.operands[0];
    ExpressionPtr& replacement = call.operands[1];
    bindValue(value, scope);
    bindValue(replacement, scope);
    // The length of a text in front decides where the other is cut: isnull('ab', fname) is varchar(2).
    if (value->kind == ExpressionKind::literal && value->type.isText()) {
        fixed_.insert(value->literal);
        value->type = literals_[static_cast<std::size_t>(value->literal)].type();
    }
    call.type = value->type.isNull() ? replacement->type : value->type;
    if (call.type.isNull()) {
        call.type = typeOf(Kind::integer);
    }
    coerce(value, call.type);
    coerce(replacement, call.type);
}

void Binder::bindCoalesce(Expression& call, const Scope& scope) {
    requireCount(call, call.name == "choose" ? 2 : 1, 255);
    const std::size_t first = call.name == "choose" ? 1 : 0;
    Type common;
    for (std::size_t i = 0; i < call.operands.size(); ++i) {
        bindValue(call.operands[i], scope);
        if (i < first) {
            coerce(call.operands[i], typeOf(Kind::integer));
        } else {
            common = commonType(common, call.operands[i]->type);
        }
    }
    if (common.isNull()) {
        throw Error(kCaseOfNulls);
    }
    for (std::size_t i = first; i < call.operands.size(); ++i) {
        coerce(call.operands[i], common);
    }
    call.type = common;
}

/// nullif(a, b) is case when a = b then null else a end, iif(c, a, b) is case when c then a else b end.
void Binder::rewriteAsCase(ExpressionPtr& pointer) {
    const bool nullIf = pointer->name == "nullif";
    requireCount(*pointer, nullIf ? 2 : 3, nullIf ? 2 : 3);
    ExpressionPtr result = makeExpression(ExpressionKind::caseWhen);
    if (nullIf) {
        ExpressionPtr comparison = makeExpression(ExpressionKind::comparison);
        comparison->op = Operator::equal;
        comparison->operands.push_back(clone(*pointer->operands[0]));
        comparison->operands.push_back(std::move(pointer->operands[1]));
        result->operands.push_back(std::move(comparison));
        result->operands.push_back(makeExpression(ExpressionKind::null));
        result->operands.push_back(std::move(pointer->operands[0]));
    } else {
        result->operands = std::move(pointer->operands);
    }
    pointer = std::move(result);
}

void Binder::bindAggregate(Expression& call, const Scope& scope) {
    if (aggregateError_ != 0) {
        throw Error(aggregateError_);
    }
    const bool count = call.name == "count" || call.name == "count_big";
    if (call.star ? !count : call.operands.size() != 1) {
        throw Error(kArgumentCount, {call.name, "1", "1"});
    }
    call.aggregate = true;
    if (aggregateSeen_ != nullptr) {
        *aggregateSeen_ = true;
    }
    call.type = typeOf(call.name == "count_big" ? Kind::bigint : Kind::integer);
    if (call.star) {
        return;
    }
    ExpressionPtr& operand = call.operands[0];
    // No aggregate within one.
    aggregateError_ = kAggregateOfAggregate;
    bindValue(operand, scope);
    aggregateError_ = 0;
    const Type type = operand->type;
    if (count) {
        return;
    }
    if (type.isNull()) {
        throw Error(kOperandType, {"NULL", call.name});
    }
    if (call.name == "min" || call.name == "max") {
        if (type.kind == Kind::bit || type.kind == Kind::text || type.kind == Kind::ntext || type.kind == Kind::image) {
            throw Error(kOperandType, {std::string(typeName(type.kind)), call.name});
        }
        call.type = type;
        return;
    }
    if (!type.isNumber() || type.kind == Kind::bit) {
        throw Error(kOperandType, {std::string(typeName(type.kind)), call.name});
    }
    if (call.name != "sum" && call.name != "avg") {
        call.type = typeOf(Kind::floating);
    } else if (type.isInteger()) {
        call.type = typeOf(type.kind == Kind::bigint ? Kind::bigint : Kind::integer);
    } else if (type.kind == Kind::decimal) {
        call.type = decimalType(38, call.name == "avg" ? std::max(type.scale, 6) : type.scale);
    } else {
        call.type = typeOf(type.kind == Kind::smallmoney ? Kind::money : type.isFloat() ? Kind::floating : type.kind);
    }
}

}  // namespace orvenmod::store::tsql
