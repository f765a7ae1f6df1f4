// A format is [#,] then # and 0 for the integer digits, then perhaps a point with 0 for a decimal that always shows and
// # for one that shows where it is not a trailing zero, then perhaps a % that shows hundredths. The number is worked on
// as decimal text, so that nothing is lost to a binary fraction.
#include "platform/numberformat.h"

#include <charconv>
#include <optional>

namespace orvenmod::platform {

namespace {

struct Format {
    bool grouped = false;
    std::size_t integerDigits = 1;  ///< at least so many
    std::size_t minimumDecimals = 0;
    std::size_t maximumDecimals = 0;
    bool percent = false;
};

struct Decimal {
    bool negative = false;
    std::string integer;
    std::string fraction;  ///< the digits behind the point
};

constexpr int kLargestExponent = 400;

std::optional<Format> parseFormat(std::string_view text) {
    Format format;
    format.percent = text.ends_with('%');
    if (format.percent) text.remove_suffix(1);
    std::size_t zeros = 0, at = 0;
    bool any = false;
    for (; at < text.size() && text[at] != '.'; ++at) {
        if (text[at] == ',') {
            format.grouped = true;
        } else if (text[at] == '0') {
            ++zeros;
            any = true;
        } else if (text[at] == '#' && zeros == 0) {
            any = true;
        } else {
            return std::nullopt;
        }
    }
    if (!any) return std::nullopt;
    if (zeros > 1) format.integerDigits = zeros;
    for (++at; at < text.size(); ++at) {
        if (text[at] != '0' && text[at] != '#') return std::nullopt;
        ++format.maximumDecimals;
        if (text[at] == '0') format.minimumDecimals = format.maximumDecimals;
    }
    return format;
}

std::string_view digitsAt(std::string_view text, std::size_t from) {
    std::size_t to = from;
    while (to < text.size() && text[to] >= '0' && text[to] <= '9')
        ++to;
    return text.substr(from, to - from);
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

void shiftPoint(Decimal& number, int exponent) {
    for (; exponent > 0; --exponent) {
        number.integer += number.fraction.empty() ? '0' : number.fraction.front();
        if (!number.fraction.empty()) number.fraction.erase(0, 1);
    }
    for (; exponent < 0; ++exponent) {
        number.fraction.insert(number.fraction.begin(), number.integer.empty() ? '0' : number.integer.back());
        if (!number.integer.empty()) number.integer.pop_back();
    }
}

std::optional<Decimal> parseNumber(std::string_view text) {
    text = withoutBlanks(text);
    Decimal number;
    std::size_t at = 0;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        number.negative = text[0] == '-';
        at = 1;
    }
    number.integer = digitsAt(text, at);
    at += number.integer.size();
    if (at < text.size() && text[at] == '.') {
        number.fraction = digitsAt(text, ++at);
        at += number.fraction.size();
    }
    if (number.integer.empty() && number.fraction.empty()) return std::nullopt;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        int exponent = 0;
        if (++at < text.size() && text[at] == '+') ++at;
        const auto [end, error] = std::from_chars(text.data() + at, text.data() + text.size(), exponent);
        if (error != std::errc() || exponent > kLargestExponent || exponent < -kLargestExponent) return std::nullopt;
        at = static_cast<std::size_t>(end - text.data());
        shiftPoint(number, exponent);
    }
    if (at != text.size()) return std::nullopt;
    return number;
}

/// Half away from zero.
void roundTo(Decimal& number, std::size_t decimals) {
    if (number.fraction.size() <= decimals) return;
    const bool up = number.fraction[decimals] >= '5';
    number.fraction.resize(decimals);
    if (!up) return;
    for (std::string* part : {&number.fraction, &number.integer}) {
        for (std::size_t at = part->size(); at-- > 0;) {
            if ((*part)[at] != '9') {
                ++(*part)[at];
                return;
            }
            (*part)[at] = '0';
        }
    }
    number.integer.insert(0, "1");
}

}  // namespace

std::string formatNumber(std::string_view text, std::string_view format) {
    const std::optional<Format> wanted = parseFormat(format);
    std::optional<Decimal> number = wanted ? parseNumber(text) : std::nullopt;
    if (!number) return std::string(text);
    if (wanted->percent) shiftPoint(*number, 2);
    number->integer.erase(0, number->integer.find_first_not_of('0'));
    roundTo(*number, wanted->maximumDecimals);
    while (number->fraction.size() > wanted->minimumDecimals && number->fraction.back() == '0')
        number->fraction.pop_back();
    const bool zero = number->integer.empty() && number->fraction.find_first_not_of('0') == std::string::npos;
    if (number->fraction.size() < wanted->minimumDecimals) number->fraction.resize(wanted->minimumDecimals, '0');
    if (number->integer.size() < wanted->integerDigits) {
        number->integer.insert(0, wanted->integerDigits - number->integer.size(), '0');
    }
    if (wanted->grouped) {
        for (std::size_t at = number->integer.size(); at > 3; at -= 3)
            number->integer.insert(at - 3, ",");
    }
    std::string shown = number->negative && !zero ? "-" : "";
    shown += number->integer;
    if (!number->fraction.empty()) shown += '.' + number->fraction;
    if (wanted->percent) shown += '%';
    return shown;
}

std::string plainNumber(double value) {
    char buffer[400];
    const char* end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr;
    return {buffer, static_cast<std::size_t>(end - buffer)};
}

bool losesDigits(std::string_view number) {
    constexpr std::size_t kKeptDigits = 15;
    if (number.starts_with('-')) number.remove_prefix(1);
    return number.size() > kKeptDigits && number.find_first_not_of("0123456789") == std::string_view::npos;
}

bool isNumberFormat(std::string_view format) { return parseFormat(format).has_value(); }

}  // namespace orvenmod::platform
