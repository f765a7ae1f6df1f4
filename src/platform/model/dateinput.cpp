#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>

#include "platform/model/cellinput.h"

namespace orvenmod::platform::model {

namespace {

using Parts = std::vector<std::string>;

constexpr std::size_t kYearDigits = 4;
constexpr std::size_t kPartDigits = 2;
constexpr int kFirstYear = 1753;  // of what a datetime column holds

/// The groups of digits; none where anything but one kind of separator stands between them.
Parts partsOf(std::string_view text) {
    constexpr std::string_view kYear = "年", kMonth = "月", kDay = "日";
    Parts parts(1);
    char separator = 0;
    while (!text.empty() && text != kDay) {
        const bool word = text.starts_with(kYear) || text.starts_with(kMonth);
        const char c = word ? '-' : text.front();
        text.remove_prefix(word ? kYear.size() : 1);
        if (c >= '0' && c <= '9') {
            parts.back() += c;
            continue;
        }
        const bool separates = c == '-' || c == '/' || c == '.';
        if (!separates || (separator != 0 && separator != c)) return {};
        separator = c;
        parts.emplace_back();
    }
    return parts;
}

int numberOf(std::string_view digits) {
    int number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

std::optional<int> yearOf(const std::string& digits) {
    constexpr int kCentury = 2000;
    if (digits.size() == kYearDigits) return numberOf(digits);
    if (digits.size() == kPartDigits) return kCentury + numberOf(digits);
    return std::nullopt;
}

std::optional<Date> dayOf(Parts parts, const std::optional<Date>& today) {
    if (parts.size() == 1 && parts[0].size() == kYearDigits + 2 * kPartDigits)
        parts = {parts[0].substr(0, kYearDigits), parts[0].substr(kYearDigits, kPartDigits),
                 parts[0].substr(kYearDigits + kPartDigits)};
    std::optional<int> year = today ? std::optional(today->year) : std::nullopt;
    if (parts.size() == 3) {
        year = yearOf(parts[0]);
        parts.erase(parts.begin());
    }
    const auto isPart = [](const std::string& part) { return !part.empty() && part.size() <= kPartDigits; };
    if (!year || parts.size() != 2 || !std::all_of(parts.begin(), parts.end(), isPart)) return std::nullopt;
    const Date day{*year, numberOf(parts[0]), numberOf(parts[1])};
    const std::chrono::year_month_day tested{std::chrono::year(day.year),
                                             std::chrono::month(static_cast<unsigned>(day.month)),
                                             std::chrono::day(static_cast<unsigned>(day.day))};
    if (!tested.ok() || day.year < kFirstYear) return std::nullopt;
    return day;
}

}  // namespace

CellInput readDate(std::string_view typed, const std::optional<Date>& today) {
    const std::string plain = plainLetters(typed);
    if (plain.empty()) return {};
    const auto day = dayOf(partsOf(plain), today);
    if (!day) return {.text = std::string(typed), .refusal = "请输入日期，如 2026-03-04"};
    return {toText(*day)};
}

}  // namespace orvenmod::platform::model
