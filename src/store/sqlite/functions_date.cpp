// Functions of dates, as translated statements call them.
//
// SQLite has no dates: they are texts in the form of tsql/dates.h, and its own functions of them know neither the
// server's parts nor its limits. And a clock that is read anew for each row tells rows of one statement apart:
// getdate's first moment stays in the Runtime until the next statement begins.
//
//   insert into t select getdate() from u            one moment in all rows
//   ts_dateadd('month', 1, '2026-01-31 00:00:00')    2026-02-28 00:00:00
//   ts_dateadd('hour', 1, '23:30:00')                00:30:00, a time as before: no dashes in it
#include <sys/time.h>

#include <ctime>

#include "store/sqlite/functioncall.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::DateTime;

enum class Zone { local, utc };

DateTime clockTime(Zone zone) {
    timeval now{};
    gettimeofday(&now, nullptr);
    std::tm parts{};
    const std::time_t seconds = now.tv_sec;
    if (zone == Zone::utc) {
        gmtime_r(&seconds, &parts);
    } else {
        localtime_r(&seconds, &parts);
    }
    const DateTime date{parts.tm_year + 1900,
                        parts.tm_mon + 1,
                        parts.tm_mday,
                        parts.tm_hour,
                        parts.tm_min,
                        parts.tm_sec > 59 ? 59 : parts.tm_sec,
                        static_cast<int>(now.tv_usec / 1000)};
    return tsql::fitted(date, tsql::Kind::datetime, "datetime");
}

void getDate(FunctionCall& call) {
    // Every row of a statement has the same moment, as on the server.
    auto& now = call.runtime().now;
    if (!now) now = clockTime(Zone::local);
    call.giveDate(*now);
}
void getUtcDate(FunctionCall& call) { call.giveDate(clockTime(Zone::utc)); }

void dateAdd(FunctionCall& call) {
    const DateTime result = tsql::dateAdd(call.datePart(0), call.integer(1), call.date(2));
    // Only the form of a value tells its type here: a time has no dashes.
    const bool timeOnly = call.text(2).find('-') == std::string_view::npos;
    if (timeOnly) return call.give(std::string_view(tsql::printStoredTime(result)));
    call.giveDate(tsql::fitted(result, tsql::Kind::datetime, "datetime"));
}
void dateDiff(FunctionCall& call) { call.give(tsql::dateDifference(call.datePart(0), call.date(1), call.date(2))); }
void datePart(FunctionCall& call) { call.give(std::int64_t{tsql::datePartValue(call.datePart(0), call.date(1))}); }
void dateName(FunctionCall& call) { call.give(std::string_view(tsql::datePartName(call.datePart(0), call.date(1)))); }

void endOfMonth(FunctionCall& call) {
    DateTime date = call.date(0);
    date.hour = date.minute = date.second = date.millisecond = 0;
    if (call.count() > 1) date = tsql::dateAdd(tsql::DatePart::month, call.integer(1), date);
    date.day = tsql::daysInMonth(date.year, date.month);
    call.giveDate(date);
}

void dateFromParts(FunctionCall& call) {
    const std::int64_t year = call.integer(0);
    const std::int64_t month = call.integer(1);
    const std::int64_t day = call.integer(2);
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) throw tsql::Error(tsql::kDateParts);
    DateTime date;
    date.year = static_cast<int>(year);
    date.month = static_cast<int>(month);
    if (day > tsql::daysInMonth(date.year, date.month)) throw tsql::Error(tsql::kDateParts);
    date.day = static_cast<int>(day);
    call.giveDate(date);
}

constexpr FunctionEntry kEntries[] = {
    strict<getDate>("ts_getdate", 0, Results::varying),
    strict<getUtcDate>("ts_getutcdate", 0, Results::varying),
    strict<dateAdd>("ts_dateadd", 3),
    strict<dateDiff>("ts_datediff", 3),
    strict<datePart>("ts_datepart", 2),
    strict<dateName>("ts_datename", 2),
    strict<endOfMonth>("ts_eomonth", 1),
    strict<endOfMonth>("ts_eomonth", 2),
    strict<dateFromParts>("ts_datefromparts", 3),
};

}  // namespace

void registerDateFunctions(sqlite3* database, Runtime& runtime) { registerEntries(database, runtime, kEntries); }

}  // namespace orvenmod::store::sqlite
