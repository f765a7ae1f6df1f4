// A day of the calendar.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::platform {

struct Date {
    int year = 1900;
    int month = 1;
    int day = 1;
    auto operator<=>(const Date&) const = default;
};

/// "2026-11-20".
std::string toText(const Date& date);

/// A date whose time is midnight as the date alone: "2024-06-07 00:00:00" as "2024-06-07"; any other text as it stands.
std::string_view withoutMidnight(std::string_view text);

}  // namespace orvenmod::platform
