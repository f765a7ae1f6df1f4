#include "transfer/daynumber.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "platform/date.h"

namespace orvenmod {

namespace {

struct Range {
    int first, last;
};
// Those of East Asian programs included.
constexpr Range kBuiltInDays[] = {{14, 17}, {22, 22}, {27, 31}, {34, 36}, {50, 54}, {57, 58}};

constexpr std::size_t kDayLength = 10;

}  // namespace

bool isDayFormat(std::string_view code) {
    bool quoted = false;
    bool bracketed = false;
    for (std::size_t at = 0; at < code.size(); ++at) {
        const char letter = code[at];
        if (letter == '"') quoted = !quoted;
        if (letter == '\\' || letter == '_') ++at;
        if (letter == '[') bracketed = true;
        if (letter == ']') bracketed = false;
        const bool counts = !quoted && !bracketed;
        if (counts && (letter == 'y' || letter == 'Y' || letter == 'd' || letter == 'D')) return true;
    }
    return false;
}

bool isDayFormat(int builtIn) {
    return std::any_of(std::begin(kBuiltInDays), std::end(kBuiltInDays),
                       [builtIn](const Range& days) { return builtIn >= days.first && builtIn <= days.last; });
}

std::string dayText(double number, DayZero zero) {
    using namespace std::chrono;
    constexpr int kSeconds = 24 * 60 * 60;
    constexpr double kLastDay = 2958465;  // of the year 9999
    if (!(number >= 0 && number <= kLastDay)) return "";
    const sys_days first =
        zero == DayZero::of1904 ? sys_days(year(1904) / January / 1) : sys_days(year(1899) / December / 30);
    double days = 0;
    auto seconds = static_cast<int>(std::lround(std::modf(number, &days) * kSeconds));
    if (seconds == kSeconds) seconds = 0, days += 1;
    const year_month_day day(first + std::chrono::days(static_cast<int>(days)));
    std::string text =
        platform::toText({static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
                          static_cast<int>(static_cast<unsigned>(day.day()))});
    if (seconds == 0) return text;
    char time[16];
    std::snprintf(time, sizeof time, " %02d:%02d:%02d", seconds / 3600 % 24, seconds / 60 % 60, seconds % 60);
    return text + time;
}

std::string dayText(std::string_view iso) {
    std::string text(iso.substr(0, kDayLength));
    std::string_view time = iso.size() > kDayLength ? iso.substr(kDayLength + 1) : "";
    time = time.substr(0, time.find('.'));
    if (!time.empty() && time != "00:00:00") text.append(" ").append(time);
    return text;
}

}  // namespace orvenmod
