// Literals: a parameter each, or within the text of what is stored. One that is converted is so when it is bound,
// unless that may fail and the value may never be needed.
//
//   cast('5' as int)                         ?1, bound as the number 5
//   case when a=1 then cast('x' as int) end  converted when it is reached
#include "store/tsql/emitter.h"
#include "store/tsql/literals.h"
#include "store/tsql/typerules.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {
namespace {

int bytesOf(const Type& type) {
    return type.length < 0 ? 1 << 30 : type.isNationalText() ? type.length * 2 : type.length;
}

bool sameText(const Type& from, const Type& to) {
    // char and nchar pad, all others keep a text that is short enough as it is.
    const bool padded = to.kind == Kind::character || to.kind == Kind::nchar;
    if (padded) {
        return from == to;
    }
    if (to.length < 0) {
        return true;
    }
    return from.length >= 0 && (to.isNationalText() ? from.length <= to.length : bytesOf(from) <= to.length);
}

bool sameNumber(const Type& from, const Type& to) {
    if (from.isInteger() && to.isInteger()) {
        return from.kind <= to.kind;
    }
    if (to.kind == Kind::floating) {
        return true;
    }
    if (to.isDecimal() && !from.isFloat()) {
        const Type a = asDecimal(from);
        const Type b = asDecimal(to);
        return a.scale <= b.scale && a.precision - a.scale <= b.precision - b.scale;
    }
    return from.kind == to.kind && !to.isDecimal();
}

}  // namespace

std::string hexDigits(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        result += kDigits[byte >> 4];
        result += kDigits[byte & 15];
    }
    return result;
}

bool sameRepresentation(const Type& from, const Type& to) {
    if (from == to || to.isNull()) {
        return true;
    }
    if (classOf(from) != classOf(to)) {
        return false;
    }
    switch (classOf(to)) {
        case TypeClass::text:
            return sameText(from, to);
        case TypeClass::number:
            return sameNumber(from, to);
        // Every other date is cut or rounded: smalldatetime to the minute, date to the day.
        case TypeClass::date:
            return to.kind == Kind::datetime && from.kind != Kind::time;
        case TypeClass::binary:
            return to.length < 0 && to.kind != Kind::binary;
        default:
            return true;
    }
}

bool mayFail(const Type& from, const Type& to) {
    const bool widening = from.isText() ? to.isText() : to.isText() || to.kind == Kind::floating;
    return !widening && !sameRepresentation(from, to);
}

std::string Emitter::literal(const Expression& expression, const Type& type, Parameter::Use use,
                             const Expression* conversion) {
    if (conversion == nullptr && expression.assigned != nullptr) {
        conversion = &expression;
    }
    return inline_ ? inlined(expression.literal, type, use, conversion)
                   : parameter(expression.literal, type, use, conversion);
}

std::string Emitter::parameter(int index, const Type& type, Parameter::Use use, const Expression* conversion) {
    Parameter parameter;
    parameter.literal = index;
    parameter.from = literals_[static_cast<std::size_t>(index)].type();
    parameter.to = type;
    parameter.use = use;
    if (conversion != nullptr && conversion->assigned != nullptr) {
        parameter.assignment = true;
        parameter.table = conversion->assigned->name;
        parameter.column = conversion->assigned->columns[static_cast<std::size_t>(conversion->assignedColumn)].name;
    }
    // A literal that is used twice in one way is one parameter: a target finds an item of the select list again in its
    // GROUP BY or ORDER BY only where both read alike.
    std::vector<Parameter>& all = translation_->parameters;
    std::size_t at = 0;
    while (at < all.size() && !(all[at].literal == index && all[at].to == type && all[at].use == use &&
                                all[at].table == parameter.table && all[at].column == parameter.column)) {
        ++at;
    }
    if (at == all.size()) {
        all.push_back(std::move(parameter));
    }
    return placeholder(at + 1, all[at]);
}

std::string Emitter::inlined(int index, const Type& type, Parameter::Use use, const Expression* conversion) const {
    const Literal& literal = literals_[static_cast<std::size_t>(index)];
    ConvertMode mode;
    if (conversion != nullptr && conversion->assigned != nullptr) {
        mode.assignment = true;
        mode.table = conversion->assigned->name;
        mode.column = conversion->assigned->columns[static_cast<std::size_t>(conversion->assignedColumn)].name;
    }
    Datum datum = convert(literalValue(literal), literal.type(), type, mode);
    if (use == Parameter::Use::trimmed) {
        datum.text.erase(datum.text.find_last_not_of(' ') + 1);
    } else if (use == Parameter::Use::folded) {
        datum.text = foldedText(datum.text);
    }
    return inlineText(datum, type);
}

}  // namespace orvenmod::store::tsql
