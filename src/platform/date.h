// A day of the calendar.
#pragma once

#include <string>

namespace orvenmod::platform {

struct Date {
    int year = 1900;
    int month = 1;
    int day = 1;
    auto operator<=>(const Date&) const = default;
};

/// "2026-11-20".
std::string toText(const Date& date);

}  // namespace orvenmod::platform
