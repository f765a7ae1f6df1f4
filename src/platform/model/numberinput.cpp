#include "platform/model/numberinput.h"

#include <charconv>
#include <chrono>

#include "platform/date.h"

namespace orvenmod::platform::model {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

double valueOf(std::string_view text) {
    double value = 0;
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

bool hasNumberShape(std::string_view text, int decimals) {
    std::size_t at = !text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    if (at == text.size()) return true;
    if (text[at] != '.' || decimals <= 0) return false;
    const std::size_t places = text.size() - ++at;
    for (; at < text.size(); ++at) {
        if (!isDigit(text[at])) return false;
    }
    return places <= static_cast<std::size_t>(decimals);
}

bool takeNumber(std::string_view& text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !isDigit(text.front())) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

}  // namespace

bool mayBecomeNumber(std::string_view text, const NumberRule& rule) {
    if (!hasNumberShape(text, rule.decimals)) return false;
    if (text.empty()) return true;
    if (text.front() == '-') return rule.minimum < 0 && valueOf(text) >= rule.minimum;
    return valueOf(text) <= rule.maximum || rule.maximum < 0;
}

std::optional<std::string> finishedNumber(std::string_view text, const NumberRule& rule) {
    if (text.empty()) return std::string();
    if (!hasNumberShape(text, rule.decimals)) return std::nullopt;
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text.remove_prefix(1);
    if (!text.empty() && text.back() == '.') text.remove_suffix(1);
    if (text.empty()) return std::nullopt;
    std::string finished = negative ? "-" : "";
    if (text.front() == '.') finished += '0';
    finished += text;
    const double value = valueOf(finished);
    if (value < rule.minimum || value > rule.maximum) return std::nullopt;
    return finished;
}

std::optional<std::string> finishedDate(std::string_view text) {
    if (text.empty()) return std::string();
    Date date;
    char separator = 0;
    for (int* part : {&date.year, &date.month, &date.day}) {
        if (part != &date.year) {
            if (text.empty() || (text.front() != '-' && text.front() != '/')) return std::nullopt;
            if (separator != 0 && separator != text.front()) return std::nullopt;
            separator = text.front();
            text.remove_prefix(1);
        }
        if (text.empty() || !takeNumber(text, *part)) return std::nullopt;
    }
    const std::chrono::year_month_day day{std::chrono::year(date.year),
                                          std::chrono::month(static_cast<unsigned>(date.month)),
                                          std::chrono::day(static_cast<unsigned>(date.day))};
    if (!text.empty() || !day.ok() || date.year < 1 || date.year > 9999) return std::nullopt;
    return toText(date);
}

}  // namespace orvenmod::platform::model
