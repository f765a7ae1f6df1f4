// A decimal number by its digits, for conversions that must round as a person does, and for what no double holds.
//
// Most decimals are kept as doubles, and the double of 2.675 lies a little below it: rounded as a number it is 2.67.
// The shortest text that reads back as the double is what was meant, so the digits are taken from there. A double has
// any number of up to 15 digits; one of more that it hasn't is kept by its digits.
//
//   Decimal::from(2.675)              digits 2675, scale 3
//   round(2)                          digits 268, scale 2: 2.68
//   99999999999.999999 toDatum()      the digits, as its double reads 100000000000
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/tsql/values.h"

namespace orvenmod::store::tsql {

/// Wide enough for the 38 digits of the largest type.
__extension__ typedef __int128 Int128;
inline constexpr std::size_t kMostDigits = 38;

class Decimal {
public:
    /// "[+-]digits[.digits]" without blanks; nothing for any other text.
    static std::optional<Decimal> parse(std::string_view text);
    static Decimal from(std::int64_t value);
    /// The shortest decimal that reads back as the value, which must be finite.
    static Decimal from(double value);
    /// Of an integer, a finite real or a decimal.
    static Decimal from(const Datum& value);

    /// Of a whole number of the last of `scale` digits behind the point.
    static Decimal ofUnits(Int128 units, int scale);

    Decimal operator*(const Decimal& other) const;
    /// Cut to that many digits behind the point; the divisor is not zero.
    Decimal dividedBy(const Decimal& divisor, int scale) const;
    bool operator==(const Decimal&) const = default;

    /// Rounds half away from zero to that many digits behind the point; a negative count rounds before the point.
    void round(int scale);
    /// Cuts behind that many digits.
    void truncate(int scale);

    /// Digits before the point, 0 for a number below 1.
    int integerDigits() const;
    /// Digits behind the point, without zeros at the end.
    int scale() const { return scale_; }
    bool isZero() const { return digits_.empty(); }
    bool isNegative() const { return negative_; }
    /// The integer part; nothing beyond 64 bits.
    std::optional<std::int64_t> toInteger() const;
    double toDouble() const;
    /// The whole number of units of the last of `scale` digits, rounded; nothing beyond 38 digits.
    std::optional<Int128> units(int scale) const;

    /// Plain, without zeros at the end behind the point.
    std::string print() const;
    /// Plain, with exactly that many digits behind the point (it must have been rounded to as many or fewer).
    std::string print(int scale) const;
    /// An integer where it is whole and fits, the nearest double where that reads back as the value, else its digits.
    /// The same value always gives the same.
    Datum toDatum() const;

private:
    void normalize();
    static Decimal ofDigits(std::string digits, int scale, bool negative);

    bool negative_ = false;
    std::string digits_;  // without zeros in front; empty for zero
    int scale_ = 0;       // digits behind the point, >= 0
};

/// The value in units of the last of `scale` digits, where the double is sure enough to tell; else nothing.
std::optional<std::int64_t> sureUnits(double value, int scale);

/// The nearest representation of `value` rounded half away from zero to `scale` digits (0 to 15).
double roundedDouble(double value, int scale);

}  // namespace orvenmod::store::tsql
