// Conversions, a routine for what the value comes from; each asks what it is to become.
//
//   varchar '' to int                  0
//   varchar '12x' to int               245
//   decimal 2.9 to int                 2: cut              money $2.9 to int       3: rounded
//   int 12345 to varchar(3)            *                   int to decimal(5,2)     8115
//   datetime 1900-01-02 12:00 to float 1.5: days since 1900-01-01
//
// Only an int or smaller has the star, and only in char and varchar; the text of any other number that is too long
// fails.
#include "store/tsql/values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "store/tsql/conversions.h"
#include "store/tsql/error.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

constexpr std::size_t kIdentifierLength = 36;

[[noreturn]] void refuseTypes(const Type& from, const Type& to) {
    throw Error(kNoExplicitConversion, {messageName(from), messageName(to)});
}

std::string identifier(std::string_view text) {
    std::string_view bare = trimmed(text);
    if (bare.size() == kIdentifierLength + 2 && bare.front() == '{' && bare.back() == '}')
        bare = bare.substr(1, kIdentifierLength);
    const auto fits = [&bare](std::size_t i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        const char c = bare[i];
        return dash ? c == '-' : (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    };
    if (bare.size() < kIdentifierLength) throw Error(kNoIdentifier);
    for (std::size_t i = 0; i < kIdentifierLength; ++i) {
        if (!fits(i)) throw Error(kNoIdentifier);
    }
    return upperText(bare.substr(0, kIdentifierLength));
}

Datum storedDate(const DateTime& date, Kind kind) {
    return textDatum(kind == Kind::time ? printStoredTime(date) : printStored(date));
}

// Days and a fraction since 1900-01-01.
Datum numberToDate(double days, const Type& from, const Type& to) {
    if (to.kind == Kind::date || to.kind == Kind::time) throw Error(kTypeClash, {messageName(from), messageName(to)});
    if (!(std::fabs(days) < 3'000'000)) throw Error(kArithmeticOverflow, {"expression", messageName(to)});
    const auto total = static_cast<std::int64_t>(std::llround(days * static_cast<double>(kMillisecondsADay)));
    try {
        return storedDate(fitted(fromMilliseconds(total), to.kind, messageName(from)), to.kind);
    } catch (const Error&) {
        throw Error(kArithmeticOverflow, {"expression", messageName(to)});
    }
}

Datum binaryDatum(std::string bytes, const Type& to, const ConvertMode& mode) {
    if (to.length > 0 && bytes.size() > static_cast<std::size_t>(to.length)) {
        if (mode.assignment) throw Error(kTextTruncated, {mode.table, mode.column, ""});
        bytes.resize(static_cast<std::size_t>(to.length));
    }
    if (to.kind == Kind::binary && to.length > 0) bytes.resize(static_cast<std::size_t>(to.length), '\0');
    Datum result;
    result.kind = Datum::Kind::blob;
    result.text = std::move(bytes);
    return result;
}

std::string bigEndian(std::int64_t value, Kind from) {
    const int size = from == Kind::bigint                         ? 8
                     : from == Kind::smallint                     ? 2
                     : from == Kind::tinyint || from == Kind::bit ? 1
                                                                  : 4;
    std::string bytes;
    for (int shift = (size - 1) * 8; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(static_cast<unsigned char>((static_cast<std::uint64_t>(value) >> shift) & 0xFF));
    }
    return bytes;
}

Datum fromText(const Datum& value, const Type& from, const Type& to, const ConvertMode& mode) {
    if (to.isText()) return fittedText(value.text, to, mode);
    if (to.isInteger()) return textToInteger(value.text, from, to);
    if (to.kind == Kind::decimal) return textToDecimal(value.text, from, to);
    if (to.isDecimal()) return textToMoney(value.text, to);
    if (to.isFloat()) return textToFloat(value.text, from, to);
    if (to.isDate()) {
        // What a column holds needs no reader of forms.
        if (const auto stored = readStored(value.text)) {
            return storedDate(fitted(*stored, to.kind, messageName(from)), to.kind);
        }
        const DateTime date = readDate(value.text, to.kind, messageName(from), mode.style);
        return storedDate(fitted(date, to.kind, messageName(from)), to.kind);
    }
    if (to.kind == Kind::uniqueidentifier) return textDatum(identifier(value.text));
    if (to.isBinary()) return binaryDatum(value.text, to, mode);
    refuseTypes(from, to);
}

// A number's text in a text type. One too short takes '*' for an integer, and refuses everything else.
Datum numberText(std::string text, const Type& from, const Type& to, const ConvertMode& mode) {
    if (to.length > 0 && text.size() > static_cast<std::size_t>(to.length)) {
        const bool small = from.isInteger() && from.kind != Kind::bigint;
        if (!small || to.isNationalText()) {
            throw Error(kArithmeticOverflow, {from.isDecimal() ? messageName(from) : "expression", messageName(to)});
        }
        text = "*";
    }
    return fittedText(std::move(text), to, mode);
}

Datum fromInteger(const Datum& value, const Type& from, const Type& to, const ConvertMode& mode) {
    if (to.isInteger()) return fittedInteger(value.integer, from, to);
    if (to.isDecimal()) return fittedDecimal(Decimal::from(value.integer), from, to);
    if (to.isFloat()) return realDatum(static_cast<double>(value.integer));
    if (to.isText()) return numberText(std::to_string(value.integer), from, to, mode);
    if (to.isDate()) return numberToDate(static_cast<double>(value.integer), from, to);
    if (to.isBinary()) return binaryDatum(bigEndian(value.integer, from.kind), to, mode);
    refuseTypes(from, to);
}

double realOf(const Datum& value) {
    if (value.kind == Datum::Kind::decimal) return Decimal::from(value).toDouble();
    return value.kind == Datum::Kind::integer ? static_cast<double>(value.integer) : value.real;
}

Datum fromDecimal(const Datum& value, const Type& from, const Type& to, const ConvertMode& mode) {
    if (to.isFloat())
        return realDatum(to.kind == Kind::real ? static_cast<double>(static_cast<float>(realOf(value)))
                                               : realOf(value));
    if (to.kind == Kind::bit) return integerDatum(realOf(value) != 0);
    if (to.isText()) return numberText(decimalText(value, from, mode.style), from, to, mode);
    if (to.isDate()) return numberToDate(realOf(value), from, to);
    if (!to.isInteger() && !to.isDecimal()) refuseTypes(from, to);
    Decimal number = Decimal::from(value);
    if (to.isDecimal()) return fittedDecimal(std::move(number), from, to);
    // Money rounds to a whole number; a decimal is cut.
    number.round(from.kind == Kind::decimal ? from.scale : 4);
    if (from.kind != Kind::decimal) number.round(0);
    const auto whole = number.toInteger();
    if (!whole) throw Error(kArithmeticOverflow, {messageName(from), messageName(to)});
    return fittedInteger(*whole, from, to);
}

std::string withSixDecimals(double value) {
    char buffer[400];
    const char* end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6).ptr;
    return {buffer, static_cast<std::size_t>(end - buffer)};
}

Datum fromFloat(double value, const Type& from, const Type& to, const ConvertMode& mode) {
    if (to.kind == Kind::floating) return realDatum(value);
    if (to.kind == Kind::real) {
        if (std::fabs(value) > std::numeric_limits<float>::max())
            throw Error(kFloatOverflow, {"real", withSixDecimals(value)});
        return realDatum(static_cast<double>(static_cast<float>(value)));
    }
    if (to.kind == Kind::bit) return integerDatum(value != 0);
    if (to.isText()) return numberText(floatText(value, from, mode.style), from, to, mode);
    if (to.isDate()) return numberToDate(value, from, to);
    if (!std::isfinite(value)) throw Error(kArithmeticOverflow, {"expression", messageName(to)});
    if (to.isDecimal()) return fittedDecimal(Decimal::from(value), from, to);
    if (!to.isInteger()) refuseTypes(from, to);
    const double whole = std::trunc(value);
    constexpr double kBeyond = 9223372036854775808.0;
    if (whole < -kBeyond || whole >= kBeyond) {
        if (to.kind == Kind::bigint) throw Error(kArithmeticOverflow, {"expression", "bigint"});
        throw Error(kFloatOverflow, {messageName(to), withSixDecimals(value)});
    }
    const auto integer = static_cast<std::int64_t>(whole);
    try {
        return fittedInteger(integer, from, to);
    } catch (const Error&) {
        throw Error(kFloatOverflow, {messageName(to), withSixDecimals(value)});
    }
}

DateTime dateOf(const Datum& value, const Type& from) {
    if (from.kind == Kind::time) return readDate(value.text, Kind::time);
    if (const auto stored = readStored(value.text)) return *stored;
    return readDate(value.text, from.kind);
}

Datum fromDate(const Datum& value, const Type& from, const Type& to, const ConvertMode& mode) {
    const DateTime date = dateOf(value, from);
    if (to.isDate()) return storedDate(fitted(date, to.kind, messageName(from)), to.kind);
    if (to.isText()) {
        std::string text = printDate(date, from.kind, mode.style);
        const bool tooLong = to.length > 0 && text.size() > static_cast<std::size_t>(to.length);
        if (tooLong && (from.kind == Kind::date || from.kind == Kind::time))
            text.resize(static_cast<std::size_t>(to.length));
        return fittedText(std::move(text), to, mode);
    }
    if (from.kind == Kind::date || from.kind == Kind::time || !to.isNumber()) refuseTypes(from, to);
    const double days = static_cast<double>(milliseconds(date)) / static_cast<double>(kMillisecondsADay);
    // From noon on it is the next day.
    if (to.isInteger())
        return fittedInteger(static_cast<std::int64_t>(std::floor(days + 0.5)), typeOf(Kind::integer), to);
    return fromFloat(days, typeOf(Kind::floating), to, mode);
}

Datum fromBinary(const Datum& value, const Type& from, const Type& to, const ConvertMode& mode) {
    if (to.isBinary()) return binaryDatum(value.text, to, mode);
    if (to.isText()) return fittedText(value.text, to, mode);
    if (!to.isInteger()) refuseTypes(from, to);
    std::uint64_t number = 0;
    for (const char byte : value.text)
        number = (number << 8) | static_cast<unsigned char>(byte);
    if (to.kind == Kind::integer) return integerDatum(static_cast<std::int32_t>(static_cast<std::uint32_t>(number)));
    if (to.kind == Kind::smallint) return integerDatum(static_cast<std::int16_t>(static_cast<std::uint16_t>(number)));
    if (to.kind == Kind::tinyint) return integerDatum(static_cast<std::uint8_t>(number));
    if (to.kind == Kind::bit) return integerDatum(number != 0);
    return integerDatum(static_cast<std::int64_t>(number));
}

// The type that the value really has: a file that other programs write can hold a text in a number column.
Type actualType(const Datum& value, const Type& declared) {
    switch (value.kind) {
        case Datum::Kind::integer:
            return declared.isInteger() || declared.isDecimal() || declared.isFloat() ? declared : typeOf(Kind::bigint);
        case Datum::Kind::real:
            return declared.isDecimal() || declared.isFloat() ? declared : typeOf(Kind::floating);
        case Datum::Kind::decimal:
            return declared.isDecimal() ? declared : decimalType(38, Decimal::from(value).scale());
        case Datum::Kind::text:
            return declared.isNumber() || declared.isBinary() || declared.isNull() ? textType(Kind::varchar, -1)
                                                                                   : declared;
        default:
            return declared.isBinary() ? declared : textType(Kind::varbinary, -1);
    }
}

}  // namespace

Datum convert(const Datum& value, const Type& from, const Type& to, const ConvertMode& mode) {
    if (value.kind == Datum::Kind::null || to.isNull()) return value;
    const Type source = actualType(value, from);
    if (source.isText() || source.kind == Kind::uniqueidentifier) return fromText(value, source, to, mode);
    if (source.isDate()) return fromDate(value, source, to, mode);
    if (source.isInteger()) return fromInteger(value, source, to, mode);
    if (source.isDecimal()) return fromDecimal(value, source, to, mode);
    if (source.isFloat()) return fromFloat(realOf(value), source, to, mode);
    return fromBinary(value, source, to, mode);
}

}  // namespace orvenmod::store::tsql
