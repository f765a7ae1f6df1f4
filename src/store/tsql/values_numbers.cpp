// From texts to numbers, and numbers into the range of their type. Each target has a number of its own for what doesn't
// fit, and the same text fails differently by it:
//
//   '99999' to smallint          244 INT2          '9999999999' to int         248
//   'abc' to int                 245               'abc' to decimal(5,2)       8114
//   '1.5' to int                 245: no integer, though it is a number
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "store/tsql/conversions.h"
#include "store/tsql/error.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

struct Range {
    std::int64_t least;
    std::int64_t greatest;
};

Range rangeOf(Kind kind) {
    switch (kind) {
        case Kind::tinyint:
            return {0, 255};
        case Kind::smallint:
            return {-32768, 32767};
        case Kind::integer:
            return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
        default:
            return {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
    }
}

bool within(std::int64_t value, Kind kind) {
    const Range range = rangeOf(kind);
    return value >= range.least && value <= range.greatest;
}

/// Whether the number, whose text has the shape of one, is above 1: its exponent and the place of its first digit tell.
bool isAboveOne(std::string_view text) {
    const auto mark = std::min(text.find_first_of("eE"), text.size());
    std::string_view exponent = text.substr(std::min(mark + 1, text.size()));
    const bool negative = exponent.starts_with('-');
    if (negative || exponent.starts_with('+')) exponent.remove_prefix(1);
    std::int64_t place = 0;
    const auto [end, error] = std::from_chars(exponent.data(), exponent.data() + exponent.size(), place);
    if (error == std::errc::result_out_of_range) return !negative;
    if (negative) place = -place;
    bool point = false, begun = false;
    for (const char c : text.substr(0, mark)) {
        point = point || c == '.';
        begun = begun || (c >= '1' && c <= '9');
        if (c < '0' || c > '9' || begun == point) continue;
        place += point ? -1 : 1;
    }
    return place > 0;
}

[[noreturn]] void refuseText(std::string_view text, const Type& from, const Type& to) {
    throw Error(kTextIsNoInteger, {messageName(from), std::string(text), messageName(to)});
}

[[noreturn]] void refuseLargeText(std::string_view text, const Type& from, const Type& to) {
    const std::string value(text);
    switch (to.kind) {
        case Kind::tinyint:
            throw Error(kTextBeyondSmallInteger, {messageName(from), value, "INT1"});
        case Kind::smallint:
            throw Error(kTextBeyondSmallInteger, {messageName(from), value, "INT2"});
        case Kind::integer:
            throw Error(kTextBeyondInteger, {messageName(from), value});
        default:
            throw Error(kArithmeticOverflow, {"expression", messageName(to)});
    }
}

// money is a 64-bit number of ten-thousandths and smallmoney one of 32 bits: 214748.3647, but -214748.3648.
bool isBeyondMoney(const Decimal& value, Kind kind) {
    std::string digits = value.print(4);
    std::erase_if(digits, [](char c) { return c == '.' || c == '-'; });
    const std::uint64_t most =
        kind == Kind::money ? std::numeric_limits<std::int64_t>::max() : std::numeric_limits<std::int32_t>::max();
    return std::stoull(digits) > most + (value.isNegative() ? 1 : 0);
}

}  // namespace

Datum integerDatum(std::int64_t value) {
    Datum result;
    result.kind = Datum::Kind::integer;
    result.integer = value;
    return result;
}

Datum realDatum(double value) {
    Datum result;
    result.kind = Datum::Kind::real;
    result.real = value;
    return result;
}

Datum textDatum(std::string text) {
    Datum result;
    result.kind = Datum::Kind::text;
    result.text = std::move(text);
    return result;
}

std::string messageName(const Type& type) {
    return type.kind == Kind::decimal ? "numeric" : std::string(typeName(type.kind));
}

Datum textToInteger(std::string_view text, const Type& from, const Type& to) {
    std::string_view digits = trimmed(text);
    if (digits.empty()) return integerDatum(0);
    if (to.kind == Kind::bit) {
        const std::string word = lowerText(digits);
        if (word == "true" || word == "false") return integerDatum(word == "true");
    }
    // from_chars takes no plus.
    if (digits.front() == '+' && digits.size() > 1 && digits[1] != '-') digits.remove_prefix(1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (end != digits.data() + digits.size() || error == std::errc::invalid_argument) refuseText(text, from, to);
    if (to.kind == Kind::bit) return integerDatum(error != std::errc() || value != 0);
    if (error == std::errc::result_out_of_range || !within(value, to.kind)) refuseLargeText(text, from, to);
    return integerDatum(value);
}

Datum textToDecimal(std::string_view text, const Type& from, const Type& to) {
    const auto number = Decimal::parse(trimmed(text));
    if (!number) throw Error(kConversionError, {messageName(from), messageName(to)});
    return fittedDecimal(*number, from, to);
}

Datum textToFloat(std::string_view text, const Type& from, const Type& to) {
    std::string_view digits = trimmed(text);
    if (digits.empty()) return realDatum(0);
    if (digits.front() == '+' && digits.size() > 1 && digits[1] != '-') digits.remove_prefix(1);
    // from_chars knows "inf" and "nan", which are no numbers here.
    const bool plain = std::all_of(digits.begin(), digits.end(), [](char c) {
        return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
    });
    double parsed = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), parsed);
    if (!plain || end != digits.data() + digits.size() || error == std::errc::invalid_argument) {
        throw Error(kConversionError, {messageName(from), messageName(to)});
    }
    const double value = nearestReal(digits);
    const bool tooLarge = std::isinf(value);
    if (tooLarge || (to.kind == Kind::real && std::fabs(value) > std::numeric_limits<float>::max())) {
        throw Error(kArithmeticOverflow, {"expression", messageName(to)});
    }
    return realDatum(to.kind == Kind::real ? static_cast<double>(static_cast<float>(value)) : value);
}

// from_chars leaves the value alone where it is too large or too close to zero.
double nearestReal(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool tooLarge = error == std::errc::result_out_of_range && isAboveOne(text);
    return tooLarge ? std::numeric_limits<double>::infinity() : value;
}

Datum textToMoney(std::string_view text, const Type& to) {
    std::string digits(trimmed(text));
    if (digits.empty()) return integerDatum(0);
    for (const std::string_view sign : {"$", "¥", "￥", "€", "£"}) {
        const std::size_t at = digits.find(sign);
        if (at == 0 || (at == 1 && (digits[0] == '-' || digits[0] == '+'))) digits.erase(at, sign.size());
    }
    std::erase(digits, ',');
    const auto number = Decimal::parse(digits);
    if (!number) throw Error(kMoneySyntax);
    try {
        return fittedDecimal(*number, textType(Kind::varchar, -1), to);
    } catch (const Error&) {
        throw Error(kMoneyOverflow);
    }
}

Datum fittedInteger(std::int64_t value, const Type& from, const Type& to) {
    if (to.kind == Kind::bit) return integerDatum(value != 0);
    if (within(value, to.kind)) return integerDatum(value);
    const bool small = to.kind == Kind::tinyint || to.kind == Kind::smallint;
    if (small && from.isInteger()) throw Error(kIntegerOverflow, {messageName(to), std::to_string(value)});
    throw Error(kArithmeticOverflow, {from.isDecimal() ? messageName(from) : "expression", messageName(to)});
}

Datum fittedDecimal(Decimal value, const Type& from, const Type& to) {
    const bool money = to.kind != Kind::decimal;
    const int scale = money ? 4 : to.scale;
    // The whole digits are counted first, so that what is left of money fits a 64-bit number.
    const int whole = to.kind == Kind::money ? 15 : to.kind == Kind::smallmoney ? 6 : to.precision - to.scale;
    value.round(scale);
    if (value.integerDigits() > whole || (money && isBeyondMoney(value, to.kind))) {
        throw Error(kArithmeticOverflow,
                    {from.isText() || from.isNumber() ? messageName(from) : "expression", messageName(to)});
    }
    return value.toDatum();
}

}  // namespace orvenmod::store::tsql
