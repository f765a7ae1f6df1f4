#include "store/tsql/decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace orvenmod::store::tsql {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

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
    const auto whole = scale_ == 0 ? toInteger() : std::nullopt;
    result.kind = whole ? Datum::Kind::integer : Datum::Kind::real;
    if (whole) {
        result.integer = *whole;
    } else {
        result.real = toDouble();
    }
    return result;
}

// Rounds most values without going over their digits: a decimal column that is fetched brings each of its fractions
// here.
double roundedDouble(double value, int scale) {
    static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (scale >= 0 && scale <= 15) {
        const double power = kPowers[scale];
        const double scaled = std::fabs(value) * power;
        const double below = std::floor(scaled);
        const double rest = scaled - below;
        // Away from the middle the double decides; close to it the digits must. 2^53 / 1024 leaves ten bits for the
        // rest, so that "close" can be told.
        if (scaled < 8796093022208.0 && std::fabs(rest - 0.5) > 0.002) {
            const double rounded = (rest > 0.5 ? below + 1 : below) / power;
            return rounded == 0 ? 0 : std::copysign(rounded, value);
        }
    }
    Decimal exact = Decimal::from(value);
    exact.round(scale);
    return exact.toDouble();
}

}  // namespace orvenmod::store::tsql
