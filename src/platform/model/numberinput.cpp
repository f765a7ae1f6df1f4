// Numbers are read and compared as decimal texts: what a clerk typed has digits that a binary number hasn't.
#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/model/cellinput.h"

namespace orvenmod::platform::model {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool allDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), isDigit); }

struct Decimal {
    bool negative = false;
    std::string whole;
    std::string places;
};

/// "1,234,567" without its separators, which stand before each three digits or nowhere.
std::optional<std::string> ungrouped(std::string_view text) {
    constexpr std::size_t kGroup = 3;
    const std::size_t first = text.find(',');
    std::string digits(text.substr(0, first));
    if (first != std::string_view::npos && (digits.empty() || digits.size() > kGroup)) return std::nullopt;
    for (std::size_t at = first; at < text.size(); at += kGroup + 1) {
        const std::string_view group = text.substr(at + 1, kGroup);
        if (text[at] != ',' || group.size() != kGroup) return std::nullopt;
        digits += group;
    }
    if (!allDigits(digits)) return std::nullopt;
    return digits;
}

std::optional<Decimal> takeDecimal(std::string_view text) {
    Decimal number;
    number.negative = text.starts_with('-');
    if (number.negative || text.starts_with('+')) text.remove_prefix(1);
    const std::size_t point = text.find('.');
    const auto whole = ungrouped(text.substr(0, point));
    if (!whole) return std::nullopt;
    number.whole = *whole;
    if (point != std::string_view::npos) number.places = text.substr(point + 1);
    if (!allDigits(number.places) || (number.whole.empty() && number.places.empty())) return std::nullopt;
    if (number.whole.empty()) number.whole = "0";
    return number;
}

std::string plainText(double limit) {
    char buffer[400];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, limit, std::chars_format::fixed).ptr};
}

/// The digits in comparable form: no zeros in front, `places` digits behind the point.
std::string digitsOf(const Decimal& number, std::size_t places) {
    std::string digits = number.whole + number.places;
    digits.append(places - number.places.size(), '0');
    return digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
}

/// Below 0 where the number is less than the limit, 0 where it equals it.
int compare(const Decimal& number, double limit) {
    const Decimal other = *takeDecimal(plainText(limit));
    const std::size_t places = std::max(number.places.size(), other.places.size());
    const std::string left = digitsOf(number, places);
    const std::string right = digitsOf(other, places);
    if (left.empty() && right.empty()) return 0;
    if (number.negative != other.negative) return number.negative ? -1 : 1;
    const int order = left.size() != right.size() ? (left.size() < right.size() ? -1 : 1) : left.compare(right);
    return number.negative ? -order : order;
}

/// What a cell of that rule takes, for its user. The type's own limits are told to who passes them.
std::string takes(const NumberRule& rule, const std::optional<Decimal>& number) {
    const NumberRule own;
    const bool low = rule.minimum > own.minimum || (number && compare(*number, rule.minimum) < 0);
    const bool high = rule.maximum < own.maximum || (number && compare(*number, rule.maximum) > 0);
    const std::string kind = rule.decimals > 0 ? "数" : "整数";
    std::string text = "请输入";
    if (low && high) {
        text += " " + plainText(rule.minimum) + " 到 " + plainText(rule.maximum) + " 之间的" + kind;
    } else if (low) {
        text += "不小于 " + plainText(rule.minimum) + " 的" + kind;
    } else if (high) {
        text += "不大于 " + plainText(rule.maximum) + " 的" + kind;
    } else {
        text += rule.decimals > 0 ? "数字" : kind;
    }
    if (rule.decimals > 0 && number && number->places.size() > static_cast<std::size_t>(rule.decimals))
        text += "，最多 " + std::to_string(rule.decimals) + " 位小数";
    return text;
}

}  // namespace

CellInput readNumber(std::string_view typed, const NumberRule& rule) {
    const std::string plain = plainLetters(typed);
    if (plain.empty()) return {};
    const auto number = takeDecimal(plain);
    const auto decimals = static_cast<std::size_t>(std::max(rule.decimals, 0));
    if (!number || number->places.size() > decimals || compare(*number, rule.minimum) < 0 ||
        compare(*number, rule.maximum) > 0) {
        return {.text = std::string(typed), .refusal = takes(rule, number)};
    }
    return {(number->negative ? "-" : "") + number->whole + (number->places.empty() ? "" : "." + number->places)};
}

}  // namespace orvenmod::platform::model
