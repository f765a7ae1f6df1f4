// Arithmetic whose results the server tells otherwise than a processor.
//
// A decimal's quotient has a scale of its own and is cut to it, not rounded. Calculated in doubles, one that is whole
// in the last of these digits can come out a hair below; so what is as good as whole counts as whole before the cut.
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

double real(const Datum& value) { return isInteger(value) ? static_cast<double>(value.integer) : value.real; }

long double wide(const Datum& value) { return isInteger(value) ? static_cast<long double>(value.integer) : value.real; }

Decimal decimal(const Datum& value) {
    return isInteger(value) ? Decimal::from(value.integer) : Decimal::from(value.real);
}

long double powerOfTen(int exponent) {
    long double power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= 10;
    return power;
}

void checkPrecision(double value, int precision, int scale) {
    if (!(std::fabs(value) < static_cast<double>(powerOfTen(precision - scale)))) {
        throw Error(kArithmeticOverflow, {"expression", "numeric"});
    }
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

Datum decimalQuotient(const Datum& dividend, const Datum& divisor, int precision, int scale) {
    const long double by = wide(divisor);
    if (by == 0) throw Error(kDivisionByZero);
    const long double quotient = wide(dividend) / by;
    checkPrecision(static_cast<double>(quotient), precision, scale);
    // A double has no more than 15 sure digits, so that beyond them there is nothing to cut.
    constexpr long double kSure = 1e15L;
    const long double scaled = quotient * powerOfTen(std::min(scale, 30));
    if (std::fabs(scaled) >= kSure) return realDatum(static_cast<double>(quotient));
    const long double nearest = std::round(scaled);
    const long double cut = std::fabs(scaled - nearest) < 1e-4L ? nearest : std::trunc(scaled);
    const long double result = cut / powerOfTen(std::min(scale, 30));
    // A whole number is kept as one, as everywhere: see Decimal::toDatum.
    const auto whole = static_cast<std::int64_t>(result);
    if (static_cast<long double>(whole) == result) return integerDatum(whole);
    return realDatum(static_cast<double>(result));
}

Datum decimalRemainder(const Datum& dividend, const Datum& divisor) {
    if (wide(divisor) == 0) throw Error(kDivisionByZero);
    if (isInteger(dividend) && isInteger(divisor))
        return integerDatum(integerRemainder(dividend.integer, divisor.integer));
    // In units of the finer scale both are whole.
    const Decimal left = decimal(dividend);
    const Decimal right = decimal(divisor);
    const int scale = std::max(left.scale(), right.scale());
    const long double power = powerOfTen(scale);
    const long double rest = std::fmod(std::round(wide(dividend) * power), std::round(wide(divisor) * power));
    return realDatum(static_cast<double>(rest / power));
}

Datum roundedDecimal(const Datum& value, int precision, int scale) {
    if (isInteger(value)) {
        checkPrecision(real(value), precision, scale);
        return value;
    }
    if (!std::isfinite(value.real)) throw Error(kArithmeticOverflow, {"expression", "numeric"});
    const double rounded = roundedDouble(value.real, scale);
    checkPrecision(rounded, precision, scale);
    return realDatum(rounded);
}

Datum roundedNumber(const Datum& value, std::int64_t digits, bool cut) {
    if (isInteger(value) && digits >= 0) return value;
    if (!isInteger(value) && !std::isfinite(value.real)) return value;
    // No double has digits further from the point.
    const int scale = static_cast<int>(std::clamp<std::int64_t>(digits, -400, 400));
    if (!isInteger(value) && !cut) return realDatum(roundedDouble(value.real, scale));
    Decimal number = decimal(value);
    if (cut) {
        number.truncate(scale);
    } else {
        number.round(scale);
    }
    if (!isInteger(value)) return realDatum(number.toDouble());
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
