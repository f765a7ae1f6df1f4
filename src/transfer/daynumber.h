// Days in a workbook: numbers whose format shows a day.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvenmod {

/// From which day a workbook counts.
enum class DayZero { of1900, of1904 };

/// Whether a number format shows a day. A format may have but a number, which every workbook knows.
bool isDayFormat(std::string_view code);
bool isDayFormat(int builtIn);

/// "2026-03-04", with the time behind it where there is one.
std::string dayText(double number, DayZero zero);

/// "2026-03-04T00:00:00" likewise.
std::string dayText(std::string_view iso);

}  // namespace orvenmod
