// The server's rules of types. Kinds stand in their order of precedence (type.h), so that the higher of two is the
// greater.
//
//   1/2                                int: whole numbers divide as such
//   '5'+1                              int: the text is below the number
//   decimal(18,4)*decimal(18,4)        decimal(37,8)
//   decimal(18,4)/int                  decimal(29,15)
//   datetime+int                       datetime: days
#include "store/tsql/typerules.h"

#include <algorithm>

#include "store/tsql/error.h"

namespace orvenmod::store::tsql {
namespace {

constexpr int kMaxPrecision = 38;

std::string name(const Type& type) { return std::string(typeName(type.kind)); }

// Two chars stay a char and two nchars an nchar, any other pair varies; one national text makes both national.
Type commonText(const Type& left, const Type& right) {
    const bool national = left.isNationalText() || right.isNationalText();
    const bool fixed = (left.kind == Kind::character || left.kind == Kind::nchar) && left.kind == right.kind;
    const bool unlimited = left.length < 0 || right.length < 0;
    Type type =
        textType(national ? Kind::nvarchar : Kind::varchar, unlimited ? -1 : std::max(left.length, right.length));
    if (fixed && !unlimited) {
        type.kind = left.kind;
    }
    return type;
}

Type commonNumber(const Type& left, const Type& right) {
    const Type& higher = left.kind >= right.kind ? left : right;
    if (higher.kind != Kind::decimal) {
        return higher;
    }
    const Type a = asDecimal(left);
    const Type b = asDecimal(right);
    const int scale = std::max(a.scale, b.scale);
    const int whole = std::max(a.precision - a.scale, b.precision - b.scale);
    return decimalType(std::min(kMaxPrecision, whole + scale), std::min(scale, kMaxPrecision - std::min(whole, 38)));
}

const char* operatorWord(Operator op) {
    switch (op) {
        case Operator::add:
            return "add";
        case Operator::subtract:
            return "subtract";
        case Operator::multiply:
            return "multiply";
        case Operator::divide:
            return "divide";
        case Operator::modulo:
            return "modulo";
        case Operator::negate:
            return "minus";
        default:
            return spelling(op);
    }
}

/// The server's table of precision and scale, cut to 38 digits in favour of the whole part.
Type decimalResult(Operator op, const Type& left, const Type& right) {
    const int p1 = left.precision;
    const int s1 = left.scale;
    const int p2 = right.precision;
    const int s2 = right.scale;
    int precision = 0;
    int scale = 0;
    switch (op) {
        case Operator::multiply:
            precision = p1 + p2 + 1;
            scale = s1 + s2;
            break;
        case Operator::divide:
            scale = std::max(6, s1 + p2 + 1);
            precision = p1 - s1 + s2 + scale;
            break;
        case Operator::modulo:
            scale = std::max(s1, s2);
            precision = std::min(p1 - s1, p2 - s2) + scale;
            break;
        default:
            scale = std::max(s1, s2);
            precision = std::max(p1 - s1, p2 - s2) + scale + 1;
            break;
    }
    if (precision <= kMaxPrecision) {
        return decimalType(std::max(precision, 1), scale);
    }
    // Digits behind the point are given up for those before it, but of a product or quotient six at the least stay.
    const int whole = precision - scale;
    const bool product = op == Operator::multiply || op == Operator::divide;
    const int kept = product && whole > 32 && scale > 6 ? 6 : std::clamp(kMaxPrecision - whole, 0, scale);
    return decimalType(kMaxPrecision, kept);
}

Type numberResult(Operator op, const Type& left, const Type& right) {
    const Kind higher = std::max(left.kind, right.kind);
    const bool bits = op == Operator::bitAnd || op == Operator::bitOr || op == Operator::bitXor;
    if (higher == Kind::floating || higher == Kind::real) {
        if (op == Operator::modulo || bits) {
            throw Error(kOperandTypes, {name(left), name(right), operatorWord(op)});
        }
        return typeOf(higher);
    }
    if (higher == Kind::decimal) {
        if (bits) {
            throw Error(kOperandTypes, {name(left), name(right), operatorWord(op)});
        }
        return decimalResult(op, asDecimal(left), asDecimal(right));
    }
    if ((higher == Kind::money || higher == Kind::smallmoney) && bits) {
        throw Error(kOperandTypes, {name(left), name(right), operatorWord(op)});
    }
    if (higher == Kind::bit && !bits) {
        throw Error(kOperandTypes, {"bit", "bit", operatorWord(op)});
    }
    return typeOf(higher);
}

Type dateResult(Operator op, const Type& left, const Type& right) {
    const Type& date = left.isDate() ? left : right;
    const Type& other = left.isDate() ? right : left;
    if (op != Operator::add && op != Operator::subtract) {
        throw Error(kOperandType, {name(date), operatorWord(op)});
    }
    if (date.kind == Kind::date || date.kind == Kind::time) {
        throw Error(other.isNumber() ? kTypeClash : kOperandTypes,
                    other.isNumber() ? std::vector<std::string>{name(date), name(other)}
                                     : std::vector<std::string>{name(left), name(right), operatorWord(op)});
    }
    return date;
}

bool isLarge(const Type& type) {
    return type.kind == Kind::text || type.kind == Kind::ntext || type.kind == Kind::image;
}

}  // namespace

TypeClass classOf(const Type& type) {
    if (type.isText()) {
        return TypeClass::text;
    }
    if (type.isNumber()) {
        return TypeClass::number;
    }
    if (type.isDate()) {
        return TypeClass::date;
    }
    if (type.isBinary()) {
        return TypeClass::binary;
    }
    return type.isNull() ? TypeClass::null : TypeClass::identifier;
}

Type textOf(const Type& type) {
    // No number has more characters: 38 digits, a sign and a point.
    constexpr int kMostNumber = 40;
    return type.isText() ? type : textType(Kind::varchar, type.isNumber() ? kMostNumber : kMostVarchar);
}

Type asDecimal(const Type& type) {
    switch (type.kind) {
        case Kind::bit:
            return decimalType(1, 0);
        case Kind::tinyint:
            return decimalType(3, 0);
        case Kind::smallint:
            return decimalType(5, 0);
        case Kind::integer:
            return decimalType(10, 0);
        case Kind::bigint:
            return decimalType(19, 0);
        case Kind::money:
            return decimalType(19, 4);
        case Kind::smallmoney:
            return decimalType(10, 4);
        default:
            return type;
    }
}

Type commonType(const Type& left, const Type& right) {
    if (left.isNull() || right.isNull()) {
        return left.isNull() ? right : left;
    }
    const TypeClass a = classOf(left);
    const TypeClass b = classOf(right);
    if (a == b) {
        if (a == TypeClass::text) {
            return commonText(left, right);
        }
        return a == TypeClass::number ? commonNumber(left, right) : (left.kind >= right.kind ? left : right);
    }
    const Type& higher = left.kind >= right.kind ? left : right;
    const Type& lower = left.kind >= right.kind ? right : left;
    checkImplicit(lower, higher);
    return higher;
}

Type arithmeticType(Operator op, const Type& left, const Type& right) {
    if (left.isNull() && right.isNull()) {
        return typeOf(Kind::integer);
    }
    // A null is taken for what stands beside it.
    if (left.isNull() || right.isNull()) {
        const Type& known = left.isNull() ? right : left;
        return arithmeticType(op, known, known);
    }
    for (const Type* operand : {&left, &right}) {
        if (isLarge(*operand)) {
            throw Error(kOperandTypes, {name(left), name(right), operatorWord(op)});
        }
        if (operand->kind == Kind::uniqueidentifier) {
            throw Error(kOperandType, {name(*operand), operatorWord(op)});
        }
    }
    if (left.isDate() || right.isDate()) {
        return dateResult(op, left, right);
    }
    if (left.isNumber() && right.isNumber()) {
        return numberResult(op, left, right);
    }
    if (left.isNumber() || right.isNumber()) {
        const Type& number = left.isNumber() ? left : right;
        return numberResult(op, number, number.kind == Kind::bit ? typeOf(Kind::integer) : number);
    }
    if (op != Operator::add) {
        throw Error(kOperandType, {name(left), operatorWord(op)});
    }
    if (left.isText() != right.isText()) {
        throw Error(kOperandTypes, {name(left), name(right), operatorWord(op)});
    }
    Type type = left.isText() ? commonText(left, right) : textType(Kind::varbinary, 0);
    if (type.length >= 0) {
        type.length = std::min(left.length + right.length, type.isNationalText() ? kMostNvarchar : kMostVarchar);
    }
    if (type.kind == Kind::character || type.kind == Kind::nchar) {
        type.kind = type.isNationalText() ? Kind::nvarchar : Kind::varchar;
    }
    return type;
}

void checkExplicit(const Type& from, const Type& to) {
    const bool large = isLarge(from) || isLarge(to);
    const bool identifier = from.kind == Kind::uniqueidentifier || to.kind == Kind::uniqueidentifier;
    const auto fits = [](const Type& type) { return type.isText() || type.isBinary(); };
    bool allowed = true;
    if (identifier) {
        const Type& other = from.kind == Kind::uniqueidentifier ? to : from;
        allowed = (fits(other) && !isLarge(other)) || other.kind == Kind::uniqueidentifier;
    } else if (large) {
        allowed = fits(from) && fits(to);
    } else if (from.isDate() != to.isDate() &&
               (from.kind == Kind::date || from.kind == Kind::time || to.kind == Kind::date || to.kind == Kind::time)) {
        allowed = fits(from.isDate() ? to : from);
    } else if (from.isFloat() || to.isFloat()) {
        allowed = !(from.isBinary() || to.isBinary());
    }
    if (!allowed && !from.isNull()) {
        throw Error(kNoExplicitConversion, {name(from), name(to)});
    }
}

void checkImplicit(const Type& from, const Type& to) {
    if (from.isNull()) {
        return;
    }
    const bool dateToNumber = from.isDate() && to.isNumber();
    const bool textToBinary = (from.isText() && to.isBinary()) || (from.isDate() && to.isBinary());
    if (dateToNumber || textToBinary) {
        const bool clash = dateToNumber && (from.kind == Kind::date || from.kind == Kind::time);
        throw Error(clash ? kTypeClash : kNoImplicitConversion, {name(from), name(to)});
    }
    try {
        checkExplicit(from, to);
    } catch (const Error&) {
        throw Error(kTypeClash, {name(from), name(to)});
    }
}

}  // namespace orvenmod::store::tsql
