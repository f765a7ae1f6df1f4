// A decimal number by its digits, for conversions that must round as a person does.
//
// Stores keep decimals as doubles, and the double of 2.675 lies a little below it: rounded as a number it is 2.67. The
// shortest text that reads back as the double is what was meant, so the digits are taken from there.
//
//   Decimal::from(2.675)    digits 2675, scale 3
//   round(2)                digits 268, scale 2: 2.68
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/tsql/values.h"

namespace orvenmod::store::tsql {

class Decimal {
public:
    /// "[+-]digits[.digits]" without blanks; nothing for any other text.
    static std::optional<Decimal> parse(std::string_view text);
    static Decimal from(std::int64_t value);
    /// The shortest decimal that reads back as the value, which must be finite.
    static Decimal from(double value);

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

    /// Plain, without zeros at the end behind the point.
    std::string print() const;
    /// Plain, with exactly that many digits behind the point (it must have been rounded to as many or fewer).
    std::string print(int scale) const;
    /// An integer where it is whole and fits, else the nearest double.
    Datum toDatum() const;

private:
    void normalize();

    bool negative_ = false;
    std::string digits_;  // without zeros in front; empty for zero
    int scale_ = 0;       // digits behind the point, >= 0
};

/// The nearest representation of `value` rounded half away from zero to `scale` digits (0 to 15).
double roundedDouble(double value, int scale);

}  // namespace orvenmod::store::tsql
