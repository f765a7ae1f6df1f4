// Dates and times: the stored text, reading what people write, convert's styles, and arithmetic.
//
// Stored: YYYY-MM-DD HH:MM:SS, with .fff only when it is not zero; a time alone HH:MM:SS[.fff]. In that form texts
// stand in the order of their dates, so that a database compares, sorts and indexes them as they are.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

struct DateTime {
    int year = 1900;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;

    bool operator==(const DateTime&) const = default;
};

inline constexpr std::int64_t kMillisecondsADay = 86'400'000;

int daysInMonth(int year, int month);
/// Days from 1900-01-01.
std::int64_t dayNumber(const DateTime& date);
/// Milliseconds from 1900-01-01 00:00:00, negative before.
std::int64_t milliseconds(const DateTime& date);
DateTime fromMilliseconds(std::int64_t milliseconds);

/// Reads a stored text; nothing for any other.
std::optional<DateTime> readStored(std::string_view text);
std::string printStored(const DateTime& date);
std::string printStoredTime(const DateTime& date);

/// Reads what a person writes: yyyymmdd, yymmdd, yyyy-m-d, yyyy/m/d, yyyy.m.d, m/d/yyyy, two-digit years (up to 49 in
/// this century), the ISO form with T, "Jan 2 2026", each with or without hh:mm[:ss[.fff]] [AM|PM]; a time alone is of
/// 1900-01-01; "" is 1900-01-01. A style of convert fixes the order of day and month where it is ambiguous.
/// `from` is the text's type, for the message.
/// Throws Error 241 for a text that is no date, 242 for a day or time that does not exist (241 for date and time).
DateTime readDate(std::string_view text, Kind to, std::string_view from = "varchar", int style = 0);

/// Brings a date into the type: its range and exactness (datetime: 1/300 s, smalldatetime: minutes, date: days).
/// Throws Error 242 {from, type} beyond the range.
DateTime fitted(const DateTime& date, Kind to, std::string_view from);

/// The text of convert(varchar, date, style); style 0 for date and time types is their own ISO form.
/// Throws Error 281 for a style that is none.
std::string printDate(const DateTime& date, Kind from, int style);

enum class DatePart {
    year,
    quarter,
    month,
    dayOfYear,
    day,
    week,
    weekday,
    hour,
    minute,
    second,
    millisecond,
};

/// "yy", "mm", "day", "hh" ... without regard to case; nothing for a word that is none.
std::optional<DatePart> datePartOf(std::string_view word);

/// Throws Error 517 {"datetime"} beyond the range.
DateTime dateAdd(DatePart part, std::int64_t count, const DateTime& date);
/// Boundaries of the part between the two. Throws Error 535 beyond int.
std::int64_t dateDifference(DatePart part, const DateTime& from, const DateTime& to);
int datePartValue(DatePart part, const DateTime& date);
/// Months and weekdays by their English names, other parts as numbers.
std::string datePartName(DatePart part, const DateTime& date);

}  // namespace orvenmod::store::tsql
