// Arithmetic whose results the server tells otherwise than a processor.
//
// A decimal's quotient has a scale of its own and is cut to it, not rounded. Calculated in doubles, one that is whole
// in the last of these digits can come out a hair below; so what doubles can't tell for sure is calculated by the
// digits.
//
//   2.0/3      0.666666
//   0.3/0.1    3, and not 2.999999
#include <algorithm>
#include <cmath>
#include <limits>

#include "store/tsql/conversions.h"
#include "store/tsql/decimal.h"
#include "store/tsql/error.h"
#include "store/tsql/functions.h"

namespace orvenmod::store::tsql {

namespace {

bool isInteger(const Datum& value) { return value.kind == Datum::Kind::integer; }

bool isDecimal(const Datum& value) { return value.kind == Datum::Kind::decimal; }

long double wide(const Datum& value) { return isInteger(value) ? static_cast<long double>(value.integer) : value.real; }

// A double has no more than 15 sure digits.
constexpr long double kSure = 1e15L;

constexpr int kMostPrecision = static_cast<int>(kMostDigits);

// All numbers of so many digits fit 64 bits.
constexpr int kKeyDigits = 18;

constexpr Int128 kMostUnits = [] {
    Int128 most = 0;
    for (std::size_t i = 0; i < kMostDigits; ++i)
        most = most * 10 + 9;
    return most;
}();

long double powerOfTen(int exponent) {
    long double power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= 10;
    return power;
}

[[noreturn]] void refuseSize() { throw Error(kArithmeticOverflow, {"expression", "numeric"}); }

void checkPrecision(double value, int precision, int scale) {
    if (!(std::fabs(value) < static_cast<double>(powerOfTen(precision - scale)))) refuseSize();
}

Datum fitted(Decimal value, int precision, int scale) {
    value.round(scale);
    if (value.integerDigits() > precision - scale) refuseSize();
    return value.toDatum();
}

}  // namespace

std::int64_t integerQuotient(std::int64_t dividend, std::int64_t divisor) {
    if (divisor == 0) throw Error(kDivisionByZero);
    // The least integer has no positive counterpart; the processor would stop the program.
    if (divisor == -1) {
        if (dividend == std::numeric_limits<std::int64_t>::min())
            throw Error(kArithmeticOverflow, {"expression", "bigint"});
        return -dividend;
    }
    return dividend / divisor;
}

std::int64_t integerRemainder(std::int64_t dividend, std::int64_t divisor) {
    if (divisor == 0) throw Error(kDivisionByZero);
    return divisor == -1 ? 0 : dividend % divisor;
}

Int128 decimalUnits(const Datum& value, int scale) {
    if (value.kind == Datum::Kind::real) {
        if (const auto units = sureUnits(value.real, scale)) return *units;
        if (!std::isfinite(value.real)) refuseSize();
    }
    const auto units = Decimal::from(value).units(scale);
    if (!units) refuseSize();
    return *units;
}

Datum decimalOfUnits(Int128 units, int precision, int scale) {
    const Int128 size = units < 0 ? -units : units;
    if (size < static_cast<Int128>(kSure) && scale <= 15 && precision >= 15) {
        const auto power = static_cast<std::int64_t>(powerOfTen(scale));
        const auto small = static_cast<std::int64_t>(units);
        if (small % power == 0) return integerDatum(small / power);
        return realDatum(static_cast<double>(small) / static_cast<double>(power));
    }
    return fitted(Decimal::ofUnits(units, scale), precision, scale);
}

Datum decimalSum(const Datum& left, const Datum& right, int precision, int scale) {
    Int128 sum = 0;
    if (__builtin_add_overflow(decimalUnits(left, scale), decimalUnits(right, scale), &sum)) refuseSize();
    return decimalOfUnits(sum, precision, scale);
}

Datum decimalDifference(const Datum& left, const Datum& right, int precision, int scale) {
    Int128 difference = 0;
    if (__builtin_sub_overflow(decimalUnits(left, scale), decimalUnits(right, scale), &difference)) refuseSize();
    return decimalOfUnits(difference, precision, scale);
}

Datum decimalProduct(const Datum& left, const Datum& right, int precision, int scale) {
    if (!isDecimal(left) && !isDecimal(right)) {
        const long double product = wide(left) * wide(right);
        if (std::fabs(product) * powerOfTen(scale) < kSure)
            return roundedDecimal(realDatum(static_cast<double>(product)), precision, scale);
    }
    return fitted(Decimal::from(left) * Decimal::from(right), precision, scale);
}

Datum decimalQuotient(const Datum& dividend, const Datum& divisor, int precision, int scale) {
    const auto exact = [&] {
        return fitted(Decimal::from(dividend).dividedBy(Decimal::from(divisor), scale), precision, scale);
    };
    if (isDecimal(divisor)) return exact();
    const long double by = wide(divisor);
    if (by == 0) throw Error(kDivisionByZero);
    if (isDecimal(dividend)) return exact();
    const long double quotient = wide(dividend) / by;
    checkPrecision(static_cast<double>(quotient), precision, scale);
    // A whole number is kept as one, as everywhere: see Decimal::toDatum.
    if (isInteger(dividend) && isInteger(divisor) && divisor.integer > 0 && dividend.integer % divisor.integer == 0)
        return integerDatum(dividend.integer / divisor.integer);
    const long double scaled = quotient * powerOfTen(scale);
    const long double doubt = std::fabs(scaled) * 1e-15L;
    if (std::fabs(scaled) >= kSure || std::fabs(scaled - std::round(scaled)) <= doubt) return exact();
    return realDatum(static_cast<double>(std::trunc(scaled) / powerOfTen(scale)));
}

Datum decimalRemainder(const Datum& dividend, const Datum& divisor) {
    const Decimal left = Decimal::from(dividend);
    const Decimal right = Decimal::from(divisor);
    if (right.isZero()) throw Error(kDivisionByZero);
    // In units of the finer scale both are whole.
    const int scale = std::max(left.scale(), right.scale());
    return decimalOfUnits(decimalUnits(dividend, scale) % decimalUnits(divisor, scale), kMostPrecision, scale);
}

Datum decimalKey(const Datum& value, int precision, int scale) {
    // Another program may have stored more than the type takes; the rows are shown all the same.
    if (value.kind == Datum::Kind::real) {
        if (const auto units = sureUnits(value.real, scale); units && precision <= kKeyDigits)
            return integerDatum(*units);
    }
    const Decimal exact = Decimal::from(value);
    const Int128 units = exact.units(scale).value_or(exact.isNegative() ? -kMostUnits : kMostUnits);
    if (precision <= kKeyDigits) {
        constexpr Int128 kLeast = std::numeric_limits<std::int64_t>::min();
        constexpr Int128 kGreatest = std::numeric_limits<std::int64_t>::max();
        return integerDatum(static_cast<std::int64_t>(std::clamp(units, kLeast, kGreatest)));
    }
    std::string digits = Decimal::ofUnits(units < 0 ? -units : units, 0).print(0);
    digits.insert(0, kMostDigits - digits.size(), '0');
    // A negative number's digits count down.
    const auto counted = [&](char c) { return units < 0 ? static_cast<char>('0' + '9' - c) : c; };
    std::transform(digits.begin(), digits.end(), digits.begin(), counted);
    return textDatum((units < 0 ? "-" : "0") + digits);
}

namespace {

Datum nextWhole(const Datum& value, int outwards) {
    const Decimal exact = Decimal::from(value);
    Decimal whole = exact;
    whole.truncate(0);
    Int128 units = whole.units(0).value_or(0);
    if (!(whole == exact) && exact.isNegative() == (outwards < 0)) units += outwards;
    return decimalOfUnits(units, kMostPrecision, 0);
}

}  // namespace

Datum decimalFloor(const Datum& value) { return nextWhole(value, -1); }
Datum decimalCeiling(const Datum& value) { return nextWhole(value, 1); }

Datum roundedDecimal(const Datum& value, int precision, int scale) {
    if (isInteger(value)) {
        checkPrecision(static_cast<double>(value.integer), precision, scale);
        return value;
    }
    if (isDecimal(value)) return fitted(Decimal::from(value), precision, scale);
    if (!std::isfinite(value.real)) throw Error(kArithmeticOverflow, {"expression", "numeric"});
    const double rounded = roundedDouble(value.real, scale);
    checkPrecision(rounded, precision, scale);
    return realDatum(rounded);
}

Datum roundedNumber(const Datum& value, std::int64_t digits, bool cut) {
    if (isInteger(value) && digits >= 0) return value;
    const bool real = value.kind == Datum::Kind::real;
    if (real && !std::isfinite(value.real)) return value;
    // No double has digits further from the point.
    const int scale = static_cast<int>(std::clamp<std::int64_t>(digits, -400, 400));
    if (real && !cut) return realDatum(roundedDouble(value.real, scale));
    Decimal number = Decimal::from(value);
    if (cut) {
        number.truncate(scale);
    } else {
        number.round(scale);
    }
    if (real) return realDatum(number.toDouble());
    if (isDecimal(value)) return number.toDatum();
    const auto whole = number.toInteger();
    if (!whole) throw Error(kArithmeticOverflow, {"expression", "bigint"});
    return integerDatum(*whole);
}

Datum powerOf(double base, double exponent, const Type& type) {
    const double power = std::pow(base, exponent);
    if (std::isnan(power)) throw Error(kFloatDomain);
    if (std::isinf(power)) {
        if (base == 0) throw Error(kDivisionByZero);
        throw Error(kArithmeticOverflow, {"expression", std::string(typeName(type.kind))});
    }
    if (type.isFloat()) return realDatum(power);
    return convert(realDatum(power), typeOf(Kind::floating), type);
}

}  // namespace orvenmod::store::tsql
