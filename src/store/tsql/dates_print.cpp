// The texts of dates: as stored, and convert's styles. Most styles up to 14 write the year with two digits, and 100
// more the same with four; the others are forms of their own.
//
//   convert(varchar(20), d, 120)   2026-01-02 00:00:00
//   convert(varchar(20), d, 112)   20260102
//   convert(varchar(8), d, 2)      26.01.02
#include <cstdio>

#include "store/tsql/dates.h"
#include "store/tsql/error.h"

namespace orvenmod::store::tsql {

namespace {

constexpr const char* kShortMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

template <typename... Arguments>
std::string printed(const char* format, Arguments... arguments) {
    char buffer[96];
    const int length = std::snprintf(buffer, sizeof buffer, format, arguments...);
    return {buffer, static_cast<std::size_t>(length)};
}

const char* shortMonth(const DateTime& d) { return kShortMonths[d.month - 1]; }
int clockHour(const DateTime& d) { return d.hour % 12 == 0 ? 12 : d.hour % 12; }
const char* halfOfDay(const DateTime& d) { return d.hour < 12 ? "AM" : "PM"; }
std::string time24(const DateTime& d) { return printed("%02d:%02d:%02d", d.hour, d.minute, d.second); }

std::string printDay(const DateTime& d, int style) {
    const int yy = d.year % 100;
    switch (style) {
        case 1:
            return printed("%02d/%02d/%02d", d.month, d.day, yy);
        case 2:
            return printed("%02d.%02d.%02d", yy, d.month, d.day);
        case 3:
            return printed("%02d/%02d/%02d", d.day, d.month, yy);
        case 4:
            return printed("%02d.%02d.%02d", d.day, d.month, yy);
        case 5:
            return printed("%02d-%02d-%02d", d.day, d.month, yy);
        case 6:
            return printed("%02d %s %02d", d.day, shortMonth(d), yy);
        case 7:
            return printed("%s %02d, %02d", shortMonth(d), d.day, yy);
        case 10:
            return printed("%02d-%02d-%02d", d.month, d.day, yy);
        case 11:
            return printed("%02d/%02d/%02d", yy, d.month, d.day);
        case 12:
            return printed("%02d%02d%02d", yy, d.month, d.day);
        case 23:
            return printed("%04d-%02d-%02d", d.year, d.month, d.day);
        case 101:
            return printed("%02d/%02d/%04d", d.month, d.day, d.year);
        case 102:
            return printed("%04d.%02d.%02d", d.year, d.month, d.day);
        case 103:
            return printed("%02d/%02d/%04d", d.day, d.month, d.year);
        case 104:
            return printed("%02d.%02d.%04d", d.day, d.month, d.year);
        case 105:
            return printed("%02d-%02d-%04d", d.day, d.month, d.year);
        case 106:
            return printed("%02d %s %04d", d.day, shortMonth(d), d.year);
        case 107:
            return printed("%s %02d, %04d", shortMonth(d), d.day, d.year);
        case 110:
            return printed("%02d-%02d-%04d", d.month, d.day, d.year);
        case 111:
            return printed("%04d/%02d/%02d", d.year, d.month, d.day);
        case 112:
            return printed("%04d%02d%02d", d.year, d.month, d.day);
        default:
            return {};
    }
}

std::string printMoment(const DateTime& d, int style) {
    switch (style) {
        case 0:
        case 100:
            return printed("%s %2d %04d %2d:%02d%s", shortMonth(d), d.day, d.year, clockHour(d), d.minute,
                           halfOfDay(d));
        case 9:
        case 109:
            return printed("%s %2d %04d %2d:%02d:%02d:%03d%s", shortMonth(d), d.day, d.year, clockHour(d), d.minute,
                           d.second, d.millisecond, halfOfDay(d));
        case 8:
        case 24:
        case 108:
            return time24(d);
        case 13:
        case 113:
            return printed("%02d %s %04d ", d.day, shortMonth(d), d.year) + time24(d) + printed(":%03d", d.millisecond);
        case 14:
        case 114:
            return time24(d) + printed(":%03d", d.millisecond);
        case 20:
        case 120:
            return printDay(d, 23) + ' ' + time24(d);
        case 21:
        case 25:
        case 121:
            return printDay(d, 23) + ' ' + time24(d) + printed(".%03d", d.millisecond);
        case 22:
            return printDay(d, 1) + printed(" %2d:%02d:%02d %s", clockHour(d), d.minute, d.second, halfOfDay(d));
        case 126:
        case 127:
            return printDay(d, 23) + 'T' + time24(d) + (d.millisecond == 0 ? "" : printed(".%03d", d.millisecond));
        default:
            throw Error(kNoDateStyle, {std::to_string(style), "datetime"});
    }
}

}  // namespace

// Put digit by digit: every date that a statement computes or stores passes here.
std::string printStored(const DateTime& d) {
    char buffer[24] = "0000-00-00 00:00:00";
    const auto put = [&buffer](int at, int width, int value) {
        for (int i = at + width - 1; i >= at; --i, value /= 10)
            buffer[i] = static_cast<char>('0' + value % 10);
    };
    put(0, 4, d.year);
    put(5, 2, d.month);
    put(8, 2, d.day);
    put(11, 2, d.hour);
    put(14, 2, d.minute);
    put(17, 2, d.second);
    if (d.millisecond == 0) return {buffer, 19};
    buffer[19] = '.';
    put(20, 3, d.millisecond);
    return {buffer, 23};
}

std::string printStoredTime(const DateTime& d) { return printStored(d).substr(11); }

std::string printDate(const DateTime& date, Kind from, int style) {
    if (style == 0 && from == Kind::date) style = 23;
    if (from == Kind::time && (style == 0 || style == 20 || style == 21 || style == 121 || style == 25)) {
        return time24(date) + printed(".%03d0000", date.millisecond);
    }
    std::string day = printDay(date, style);
    if (!day.empty()) return day;
    // A style with a time gives a date without one its day alone.
    if (from == Kind::date &&
        (style == 20 || style == 21 || style == 25 || style == 120 || style == 121 || style == 126 || style == 127)) {
        return printDay(date, 23);
    }
    return printMoment(date, style);
}

}  // namespace orvenmod::store::tsql
