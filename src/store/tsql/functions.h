// The dialect's scalar functions on plain values. Texts are UTF-8; positions and lengths count characters from 1;
// comparison within a function ignores the case of ASCII letters. Failures are Errors by number.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/tsql/decimal.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql {

// Text

/// 536 {"left"/"right"} for a negative length.
std::string_view leftPart(std::string_view text, std::int64_t length);
std::string_view rightPart(std::string_view text, std::int64_t length);
/// The start may be below 1; 537 for a negative length.
std::string_view substring(std::string_view text, std::int64_t start, std::int64_t length);
std::string replaceAll(std::string_view text, std::string_view old, std::string_view with);
/// The position of `find` from `start` on, 0 for none or for an empty `find`.
std::int64_t charIndex(std::string_view find, std::string_view text, std::int64_t start);
std::string reversed(std::string_view text);
std::string replicated(std::string_view text, std::int64_t count);
/// Nothing for a start outside the text or a negative length.
std::optional<std::string> stuffed(std::string_view text, std::int64_t start, std::int64_t length,
                                   std::string_view with);
/// Right-aligned in `length` characters; fewer decimals, or stars, where it does not fit.
std::string strOf(double value, std::int64_t length, std::int64_t decimals);
/// Nothing for a quote that is none.
std::optional<std::string> quotedName(std::string_view text, std::string_view quote);
std::string soundex(std::string_view text);
/// Whether the text reads as a number or an amount of money.
bool isNumeric(std::string_view text);
bool isDate(std::string_view text);
/// Bytes that the server would keep.
std::int64_t dataLength(const Datum& value, const Type& type);

// Numbers. Decimals come and go as integer, real or decimal.

/// 8134 for a zero divisor, 8115 beyond 64 bits.
std::int64_t integerQuotient(std::int64_t dividend, std::int64_t divisor);
std::int64_t integerRemainder(std::int64_t dividend, std::int64_t divisor);
/// Rounded half away from zero to `scale` digits; 8115 beyond `precision` digits.
Datum decimalSum(const Datum& left, const Datum& right, int precision, int scale);
Datum decimalDifference(const Datum& left, const Datum& right, int precision, int scale);
Datum decimalProduct(const Datum& left, const Datum& right, int precision, int scale);
/// Cut to `scale` digits; 8134, 8115.
Datum decimalQuotient(const Datum& dividend, const Datum& divisor, int precision, int scale);
Datum decimalRemainder(const Datum& dividend, const Datum& divisor);
/// Rounded half away from zero to `scale` digits; 8115 beyond `precision` digits.
Datum roundedDecimal(const Datum& value, int precision, int scale);
/// What orders as the decimals do: the value in units of its last digit where the precision is 18 at most, else a
/// text of one width, which compares byte by byte.
Datum decimalKey(const Datum& value, int precision, int scale);
/// The decimal in units of the last of `scale` digits, rounded half away from zero; 8115 beyond 38 digits.
Int128 decimalUnits(const Datum& value, int scale);
/// The inverse; 8115 beyond `precision` digits.
Datum decimalOfUnits(Int128 units, int precision, int scale);
/// The whole number next to it.
Datum decimalFloor(const Datum& value);
Datum decimalCeiling(const Datum& value);
/// round(value, digits, cut): of value's own representation.
Datum roundedNumber(const Datum& value, std::int64_t digits, bool cut);
/// In the base's type; 8115 beyond it, 3623 where there is no such power.
Datum powerOf(double base, double exponent, const Type& type);

}  // namespace orvenmod::store::tsql
