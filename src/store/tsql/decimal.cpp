#include "store/tsql/decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace orvenmod::store::tsql {

namespace {

/// Any number of so many digits comes back from its double.
constexpr std::size_t kSureDigits = 15;

constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string withoutZerosInFront(std::string digits) {
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

Int128 wholeOf(std::string_view digits) {
    Int128 result = 0;
    for (const char digit : digits)
        result = result * 10 + (digit - '0');
    return result;
}

std::string digitsOf(Int128 whole) {
    std::string digits;
    for (; whole != 0; whole /= 10)
        digits += static_cast<char>('0' + static_cast<int>(whole % 10));
    std::reverse(digits.begin(), digits.end());
    return digits;
}

// Whole numbers by their digits, without zeros in front.

bool isLess(const std::string& left, const std::string& right) {
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

/// The left one is not less.
std::string difference(std::string left, std::string right) {
    right.insert(0, left.size() - right.size(), '0');
    int borrowed = 0;
    for (std::size_t i = left.size(); i-- > 0;) {
        const int digit = left[i] - right[i] - borrowed;
        borrowed = digit < 0 ? 1 : 0;
        left[i] = static_cast<char>('0' + digit + 10 * borrowed);
    }
    return withoutZerosInFront(std::move(left));
}

std::string product(const std::string& left, const std::string& right) {
    if (left.size() + right.size() <= kMostDigits) return digitsOf(wholeOf(left) * wholeOf(right));
    std::string result(left.size() + right.size(), '0');
    for (std::size_t i = left.size(); i-- > 0;) {
        int carry = 0;
        for (std::size_t j = right.size(); j-- > 0;) {
            const int digit = (result[i + j + 1] - '0') + (left[i] - '0') * (right[j] - '0') + carry;
            result[i + j + 1] = static_cast<char>('0' + digit % 10);
            carry = digit / 10;
        }
        result[i] = static_cast<char>(result[i] + carry);
    }
    return withoutZerosInFront(std::move(result));
}

std::string quotient(const std::string& dividend, const std::string& divisor) {
    if (std::max(dividend.size(), divisor.size()) <= kMostDigits) return digitsOf(wholeOf(dividend) / wholeOf(divisor));
    std::string result;
    std::string rest;
    for (const char digit : dividend) {
        if (!rest.empty() || digit != '0') rest += digit;
        char times = '0';
        for (; !isLess(rest, divisor); ++times)
            rest = difference(std::move(rest), divisor);
        result += times;
    }
    return withoutZerosInFront(std::move(result));
}

}  // namespace

std::optional<Decimal> Decimal::parse(std::string_view text) {
    Decimal result;
    std::size_t at = 0;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        result.negative_ = text[0] == '-';
        at = 1;
    }
    bool point = false;
    bool any = false;
    for (; at < text.size(); ++at) {
        if (text[at] == '.' && !point) {
            point = true;
        } else if (isDigit(text[at])) {
            any = true;
            result.digits_ += text[at];
            result.scale_ += point;
        } else {
            return std::nullopt;
        }
    }
    if (!any) return std::nullopt;
    result.normalize();
    return result;
}

Decimal Decimal::from(std::int64_t value) {
    Decimal result;
    result.digits_ = std::to_string(value);
    if (value < 0) {
        result.negative_ = true;
        result.digits_.erase(0, 1);
    }
    result.normalize();
    return result;
}

Decimal Decimal::from(double value) {
    char buffer[400];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr;
    return parse(std::string_view(buffer, static_cast<std::size_t>(end - buffer))).value_or(Decimal());
}

Decimal Decimal::from(const Datum& value) {
    switch (value.kind) {
        case Datum::Kind::integer:
            return from(value.integer);
        case Datum::Kind::real:
            return from(value.real);
        default:
            return parse(value.text).value_or(Decimal());
    }
}

void Decimal::normalize() {
    const std::size_t first = digits_.find_first_not_of('0');
    if (first == std::string::npos) {
        *this = Decimal();
        return;
    }
    digits_.erase(0, first);
    while (scale_ > 0 && !digits_.empty() && digits_.back() == '0') {
        digits_.pop_back();
        --scale_;
    }
}

void Decimal::truncate(int scale) {
    if (scale >= scale_) return;
    const int cut = scale_ - scale;
    const int size = static_cast<int>(digits_.size());
    digits_.resize(static_cast<std::size_t>(std::max(0, size - cut)));
    if (scale < 0 && !digits_.empty()) digits_.append(static_cast<std::size_t>(-scale), '0');
    scale_ = std::max(scale, 0);
    normalize();
}

void Decimal::round(int scale) {
    if (scale >= scale_) return;
    // Below 0 where even the first digit lies behind the cut by more than one place.
    const int kept = static_cast<int>(digits_.size()) - (scale_ - scale);
    const bool up = kept >= 0 && digits_[static_cast<std::size_t>(kept)] >= '5';
    const bool negative = negative_;
    if (!up) return truncate(scale);
    digits_.resize(static_cast<std::size_t>(kept));
    auto digit = digits_.rbegin();
    while (digit != digits_.rend() && *digit == '9')
        *digit++ = '0';
    if (digit == digits_.rend()) {
        digits_.insert(digits_.begin(), '1');
    } else {
        ++*digit;
    }
    if (scale < 0) digits_.append(static_cast<std::size_t>(-scale), '0');
    scale_ = std::max(scale, 0);
    negative_ = negative;
    normalize();
}

Decimal Decimal::ofDigits(std::string digits, int scale, bool negative) {
    Decimal result;
    result.digits_ = std::move(digits);
    result.scale_ = scale;
    result.negative_ = negative;
    result.normalize();
    return result;
}

Decimal Decimal::ofUnits(Int128 units, int scale) {
    std::string digits = digitsOf(units < 0 ? -units : units);
    if (digits.size() < static_cast<std::size_t>(scale))
        digits.insert(0, static_cast<std::size_t>(scale) - digits.size(), '0');
    return ofDigits(std::move(digits), scale, units < 0);
}

std::optional<Int128> Decimal::units(int scale) const {
    Decimal rounded = *this;
    rounded.round(scale);
    const int zeros = scale - rounded.scale_;
    if (rounded.digits_.size() + static_cast<std::size_t>(zeros) > kMostDigits && !rounded.isZero())
        return std::nullopt;
    Int128 result = wholeOf(rounded.digits_);
    for (int i = 0; i < zeros && result != 0; ++i)
        result *= 10;
    return negative_ ? -result : result;
}

Decimal Decimal::operator*(const Decimal& other) const {
    return ofDigits(product(digits_, other.digits_), scale_ + other.scale_, negative_ != other.negative_);
}

Decimal Decimal::dividedBy(const Decimal& divisor, int scale) const {
    // In units that make the quotient a whole number of its last digit.
    const int shift = scale + divisor.scale_ - scale_;
    const auto zeros = [](int count) { return std::string(static_cast<std::size_t>(std::max(count, 0)), '0'); };
    return ofDigits(quotient(digits_ + zeros(shift), divisor.digits_ + zeros(-shift)), scale,
                    negative_ != divisor.negative_);
}

int Decimal::integerDigits() const { return std::max(0, static_cast<int>(digits_.size()) - scale_); }

std::optional<std::int64_t> Decimal::toInteger() const {
    std::string text = negative_ ? "-" : "";
    text.append(digits_, 0, static_cast<std::size_t>(integerDigits()));
    if (text.empty() || text == "-") return 0;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    return value;
}

double Decimal::toDouble() const {
    const std::string text = print();
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string Decimal::print() const { return print(scale_); }

std::string Decimal::print(int scale) const {
    const auto whole = static_cast<std::size_t>(integerDigits());
    std::string text = negative_ ? "-" : "";
    text += whole == 0 ? "0" : digits_.substr(0, whole);
    if (scale <= 0) return text;
    text += '.';
    std::string behind = digits_.substr(whole);
    behind.insert(0, static_cast<std::size_t>(scale_) - behind.size(), '0');
    behind.resize(static_cast<std::size_t>(scale), '0');
    return text + behind;
}

Datum Decimal::toDatum() const {
    Datum result;
    if (const auto whole = scale_ == 0 ? toInteger() : std::nullopt) {
        result.kind = Datum::Kind::integer;
        result.integer = *whole;
        return result;
    }
    result.real = toDouble();
    const bool exact = digits_.size() <= kSureDigits || from(result.real) == *this;
    result.kind = exact ? Datum::Kind::real : Datum::Kind::decimal;
    if (!exact) result.text = print();
    return result;
}

// Tells most values without going over their digits: a decimal column that is fetched brings each of its fractions
// here.
std::optional<std::int64_t> sureUnits(double value, int scale) {
    if (scale < 0 || scale >= static_cast<int>(std::size(kPowers))) return std::nullopt;
    const double scaled = std::fabs(value) * kPowers[scale];
    const double below = std::floor(scaled);
    const double rest = scaled - below;
    // Away from the middle the double decides; close to it the digits must. 2^53 / 1024 leaves ten bits for the
    // rest, so that "close" can be told.
    if (!(scaled < 8796093022208.0) || std::fabs(rest - 0.5) <= 0.002) return std::nullopt;
    const auto units = static_cast<std::int64_t>(rest > 0.5 ? below + 1 : below);
    return value < 0 ? -units : units;
}

double roundedDouble(double value, int scale) {
    if (const auto units = sureUnits(value, scale)) return static_cast<double>(*units) / kPowers[scale];
    Decimal exact = Decimal::from(value);
    exact.round(scale);
    return exact.toDouble();
}

}  // namespace orvenmod::store::tsql
