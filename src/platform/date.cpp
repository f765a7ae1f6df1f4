#include "platform/date.h"

#include <cstdio>

namespace orvenmod::platform {

std::string toText(const Date& date) {
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.year, date.month, date.day);
    return text;
}

std::string_view withoutMidnight(std::string_view text) {
    constexpr std::string_view kMidnight = " 00:00:00";
    constexpr std::size_t kDate = 10;
    const bool isDate =
        text.size() == kDate + kMidnight.size() && text.ends_with(kMidnight) && text[4] == '-' && text[7] == '-';
    return isDate ? text.substr(0, kDate) : text;
}

}  // namespace orvenmod::platform
