// Arithmetic on dates.
//
// Weeks, days and less are counted in milliseconds since 1900-01-01, negative before, years and months in months; the
// calendar is asked at both ends only. Differences count the boundaries that are crossed and not the time that has
// passed:
//
//   datediff(day, '2026-01-01 23:59', '2026-01-02 00:00')    1
//   datediff(year, '2025-12-31', '2026-01-01')               1
//   dateadd(month, 1, '2026-01-31')                          2026-02-28, the last day that there is
#include "store/tsql/dates.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "store/tsql/error.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

constexpr const char* kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                   "July",    "August",   "September", "October", "November", "December"};
constexpr const char* kWeekdays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kMinute = 60 * kSecond;
constexpr std::int64_t kHour = 60 * kMinute;

// Days from 1970-01-01 of a Gregorian day. Counted in eras of 400 years, which are all 146097 days long; a year begins
// in March, so that the leap day is its last and shifts no other. 719468 days lie between 0000-03-01 and 1970-01-01.
std::int64_t civilDays(std::int64_t year, int month, int day) {
    year -= month <= 2;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

constexpr std::int64_t kDaysTo1900 = -25567;

std::int64_t floorDivide(std::int64_t value, std::int64_t by) {
    return value / by - (value % by != 0 && (value < 0) != (by < 0));
}

std::string lowered(std::string_view text) { return lowerText(text); }

// Sunday 0 ... Saturday 6; 1900-01-01 was a Monday.
int weekday(std::int64_t day) { return static_cast<int>(((day + 1) % 7 + 7) % 7); }

std::int64_t yearMonth(const DateTime& date) { return std::int64_t{date.year} * 12 + date.month - 1; }

DateTime monthsAdded(std::int64_t count, DateTime date) {
    const std::int64_t months = yearMonth(date) + count;
    if (months < 12 || months >= std::int64_t{12} * 10000) throw Error(kDateAddOverflow, {"datetime"});
    date.year = static_cast<int>(months / 12);
    date.month = static_cast<int>(months % 12) + 1;
    date.day = std::min(date.day, daysInMonth(date.year, date.month));
    return date;
}

// The length of a part in milliseconds; 0 for parts of no fixed length.
std::int64_t partLength(DatePart part) {
    switch (part) {
        case DatePart::week:
            return 7 * kMillisecondsADay;
        case DatePart::day:
        case DatePart::dayOfYear:
        case DatePart::weekday:
            return kMillisecondsADay;
        case DatePart::hour:
            return kHour;
        case DatePart::minute:
            return kMinute;
        case DatePart::second:
            return kSecond;
        case DatePart::millisecond:
            return 1;
        default:
            return 0;
    }
}

}  // namespace

int daysInMonth(int year, int month) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

std::int64_t dayNumber(const DateTime& date) { return civilDays(date.year, date.month, date.day) - kDaysTo1900; }

std::int64_t milliseconds(const DateTime& date) {
    return dayNumber(date) * kMillisecondsADay + date.hour * kHour + date.minute * kMinute + date.second * kSecond +
           date.millisecond;
}

DateTime fromMilliseconds(std::int64_t total) {
    const std::int64_t days = floorDivide(total, kMillisecondsADay);
    const std::int64_t rest = total - days * kMillisecondsADay;
    const std::int64_t shifted = days + kDaysTo1900 + 719468;
    const std::int64_t era = floorDivide(shifted, 146097);
    const std::int64_t dayOfEra = shifted - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;
    DateTime date;
    date.day = static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1);
    date.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    date.year = static_cast<int>(yearOfEra + era * 400 + (date.month <= 2));
    date.hour = static_cast<int>(rest / kHour);
    date.minute = static_cast<int>(rest % kHour / kMinute);
    date.second = static_cast<int>(rest % kMinute / kSecond);
    date.millisecond = static_cast<int>(rest % kSecond);
    return date;
}

DateTime fitted(const DateTime& date, Kind to, std::string_view from) {
    const auto refuse = [&] { throw Error(kDateOutOfRange, {std::string(from), std::string(typeName(to))}); };
    DateTime result = date;
    switch (to) {
        case Kind::date:
            result.hour = result.minute = result.second = result.millisecond = 0;
            return result;
        case Kind::time:
            result.year = 1900;
            result.month = result.day = 1;
            return result;
        case Kind::smalldatetime: {
            // Half a minute rounds up from 29.999 seconds on.
            const std::int64_t total = milliseconds(date);
            result = fromMilliseconds(floorDivide(total + kMinute / 2 + 1, kMinute) * kMinute);
            // The type counts its days in 16 bits.
            if (result.year < 1900 || dayNumber(result) > 65535) refuse();
            return result;
        }
        default: {
            // 300 ticks a second: milliseconds end in 0, 3 or 7. 995 is the tick 299 and becomes 997.
            const int ticks = (date.millisecond * 3 + 5) / 10;
            const std::int64_t rounded = (std::int64_t{ticks} * 10 + 1) / 3;
            result = fromMilliseconds(milliseconds(date) - date.millisecond + rounded);
            if (result.year < 1753 || result.year > 9999) refuse();
            return result;
        }
    }
}

std::optional<DatePart> datePartOf(std::string_view word) {
    static constexpr std::pair<std::string_view, DatePart> kWords[] = {
        {"year", DatePart::year},       {"yy", DatePart::year},
        {"yyyy", DatePart::year},       {"quarter", DatePart::quarter},
        {"qq", DatePart::quarter},      {"q", DatePart::quarter},
        {"month", DatePart::month},     {"mm", DatePart::month},
        {"m", DatePart::month},         {"dayofyear", DatePart::dayOfYear},
        {"dy", DatePart::dayOfYear},    {"y", DatePart::dayOfYear},
        {"day", DatePart::day},         {"dd", DatePart::day},
        {"d", DatePart::day},           {"week", DatePart::week},
        {"wk", DatePart::week},         {"ww", DatePart::week},
        {"weekday", DatePart::weekday}, {"dw", DatePart::weekday},
        {"w", DatePart::weekday},       {"hour", DatePart::hour},
        {"hh", DatePart::hour},         {"minute", DatePart::minute},
        {"mi", DatePart::minute},       {"n", DatePart::minute},
        {"second", DatePart::second},   {"ss", DatePart::second},
        {"s", DatePart::second},        {"millisecond", DatePart::millisecond},
        {"ms", DatePart::millisecond},
    };
    const std::string wanted = lowered(word);
    const auto* found =
        std::find_if(std::begin(kWords), std::end(kWords), [&](const auto& pair) { return pair.first == wanted; });
    if (found == std::end(kWords)) return std::nullopt;
    return found->second;
}

DateTime dateAdd(DatePart part, std::int64_t count, const DateTime& date) {
    // The server takes the count as an int.
    if (count > std::numeric_limits<int>::max() || count < std::numeric_limits<int>::min()) {
        throw Error(kArithmeticOverflow, {"expression", "int"});
    }
    DateTime result;
    switch (part) {
        case DatePart::year:
            result = monthsAdded(count * 12, date);
            break;
        case DatePart::quarter:
            result = monthsAdded(count * 3, date);
            break;
        case DatePart::month:
            result = monthsAdded(count, date);
            break;
        default:
            result = fromMilliseconds(milliseconds(date) + count * partLength(part));
            break;
    }
    if (result.year < 1753 || result.year > 9999) throw Error(kDateAddOverflow, {"datetime"});
    return result;
}

std::int64_t dateDifference(DatePart part, const DateTime& from, const DateTime& to) {
    std::int64_t difference = 0;
    switch (part) {
        case DatePart::year:
            difference = to.year - from.year;
            break;
        case DatePart::quarter:
            difference = floorDivide(yearMonth(to), 3) - floorDivide(yearMonth(from), 3);
            break;
        case DatePart::month:
            difference = yearMonth(to) - yearMonth(from);
            break;
        case DatePart::week:
            // Weeks begin on Sunday; day 0 was a Monday.
            difference = floorDivide(dayNumber(to) + 1, 7) - floorDivide(dayNumber(from) + 1, 7);
            break;
        default:
            difference =
                floorDivide(milliseconds(to), partLength(part)) - floorDivide(milliseconds(from), partLength(part));
            break;
    }
    if (difference > std::numeric_limits<int>::max() || difference < std::numeric_limits<int>::min())
        throw Error(kDateDifferenceOverflow);
    return difference;
}

int datePartValue(DatePart part, const DateTime& date) {
    const auto dayOfYear = [&date] {
        return static_cast<int>(dayNumber(date) - dayNumber({.year = date.year, .month = 1, .day = 1})) + 1;
    };
    switch (part) {
        case DatePart::year:
            return date.year;
        case DatePart::quarter:
            return (date.month + 2) / 3;
        case DatePart::month:
            return date.month;
        case DatePart::dayOfYear:
            return dayOfYear();
        case DatePart::day:
            return date.day;
        case DatePart::week: {
            const int first = weekday(dayNumber({.year = date.year, .month = 1, .day = 1}));
            return (dayOfYear() - 1 + first) / 7 + 1;
        }
        case DatePart::weekday:
            return weekday(dayNumber(date)) + 1;
        case DatePart::hour:
            return date.hour;
        case DatePart::minute:
            return date.minute;
        case DatePart::second:
            return date.second;
        case DatePart::millisecond:
            break;
    }
    return date.millisecond;
}

std::string datePartName(DatePart part, const DateTime& date) {
    const int value = datePartValue(part, date);
    if (part == DatePart::month) return kMonths[value - 1];
    if (part == DatePart::weekday) return kWeekdays[value - 1];
    return std::to_string(value);
}

}  // namespace orvenmod::store::tsql
