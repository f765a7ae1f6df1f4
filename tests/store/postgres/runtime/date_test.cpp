// Arithmetic on dates, on the server as on the embedded store.
#include <gtest/gtest.h>

#include "store/postgres/runtime/bothstores.h"

namespace orvenmod::store::postgres {
namespace {

const std::vector<std::string> kParts = {"year",    "quarter", "month",  "dayofyear", "day",        "week",
                                         "weekday", "hour",    "minute", "second",    "millisecond"};
const std::vector<std::string> kMoments = {
    "1753-01-01 00:00:00", "1899-12-31 23:59:59.997", "1900-01-01 00:00:00",     "1999-12-31 23:59:59.997",
    "2000-02-29 12:00:00", "2024-01-31 06:30:15.123", "2026-01-02 03:04:05.007", "2026-11-21 20:00:00",
    "2033-01-01 00:00:00", "9999-12-31 23:59:59.997", "0001-01-01 00:00:00",     "1752-12-31 00:00:00"};

TEST(PostgresDates, AreMovedAsOnTheEmbeddedStore) {
    for (const std::string& part : kParts) {
        for (const std::string& date : kMoments) {
            for (const std::int64_t n : {0L, 1L, -1L, 13L, -366L, 100000L, 2147483647L, -2147483648L, 2147483648L})
                bothStores().expectSame("ts_dateadd", {text(part), integer(n), moment(date)});
        }
        for (const std::int64_t n : {0L, 1L, -1L, 25L, 100000L})
            bothStores().expectSame("ts_dateadd", {text(part), integer(n), timeOfDay("13:05:09.123")});
    }
}

TEST(PostgresDates, LieApartByTheBoundariesBetweenThem) {
    for (const std::string& part : kParts) {
        for (const std::string& from : kMoments) {
            for (const std::string& to : kMoments)
                bothStores().expectSame("ts_datediff", {text(part), moment(from), moment(to)});
        }
        bothStores().expectSame("ts_datediff", {text(part), timeOfDay("13:05:09.123"), timeOfDay("12:05:09")});
        bothStores().expectSame("ts_datediff", {text(part), timeOfDay("13:05:09"), moment(kMoments[4])});
        bothStores().expectSame("ts_datediff", {text(part), moment(kMoments[4]), timeOfDay("13:05:09")});
    }
}

TEST(PostgresDates, HavePartsAndNames) {
    for (const std::string& part : kParts) {
        for (const std::string& date : kMoments) {
            bothStores().expectSame("ts_datepart", {text(part), moment(date)});
            bothStores().expectSame("ts_datename", {text(part), moment(date)});
        }
        bothStores().expectSame("ts_datepart", {text(part), timeOfDay("13:05:09.123")});
        bothStores().expectSame("ts_datename", {text(part), timeOfDay("13:05:09.123")});
    }
    for (int day = 1; day <= 31; ++day) {
        for (const char* month : {"2023-12-", "2024-01-", "2026-01-"}) {
            const std::string date = month + std::string(day < 10 ? "0" : "") + std::to_string(day) + " 00:00:00";
            bothStores().expectSame("ts_datepart", {text("week"), moment(date)});
            bothStores().expectSame("ts_datename", {text("weekday"), moment(date)});
        }
    }
}

TEST(PostgresDates, EndTheirMonths) {
    for (const std::string& date : kMoments) {
        bothStores().expectSame("ts_eomonth", {moment(date)});
        for (const std::int64_t n : {0L, 1L, -1L, 13L, -4000L, 200000L})
            bothStores().expectSame("ts_eomonth", {moment(date), integer(n)});
    }
}

TEST(PostgresDates, AreMadeOfTheirParts) {
    for (const std::int64_t year : {0, 1, 1900, 2024, 2026, 9999, 10000}) {
        for (const std::int64_t month : {0, 1, 2, 12, 13}) {
            for (const std::int64_t day : {-1, 0, 1, 28, 29, 31, 32})
                bothStores().expectSame("ts_datefromparts", {integer(year), integer(month), integer(day)});
        }
    }
}

TEST(PostgresDates, AreNullWhereAnArgumentIs) {
    bothStores().expectSame("ts_dateadd", {text("day"), nullOf("int"), moment(kMoments[0])});
    bothStores().expectSame("ts_dateadd", {text("day"), integer(1), nullOf("datetime")});
    bothStores().expectSame("ts_datediff", {text("day"), moment(kMoments[0]), nullOf("datetime")});
    bothStores().expectSame("ts_datediff", {text("day"), nullOf("datetime"), moment(kMoments[0])});
    bothStores().expectSame("ts_datepart", {text("week"), nullOf("datetime")});
    bothStores().expectSame("ts_datename", {text("month"), nullOf("datetime")});
    bothStores().expectSame("ts_eomonth", {nullOf("datetime")});
    bothStores().expectSame("ts_eomonth", {nullOf("datetime"), integer(1)});
    bothStores().expectSame("ts_eomonth", {moment(kMoments[4]), nullOf("int")});
    bothStores().expectSame("ts_datefromparts", {integer(2026), nullOf("int"), integer(1)});
}

TEST(PostgresDates, OfTheClockAreOneMomentWithinAStatement) {
    EXPECT_EQ(bothStores().server("(SELECT count(DISTINCT orven.ts_getdate()) FROM generate_series(1, 1000) AS i "
                                  "WHERE pg_sleep(0.00001) IS NOT NULL)"),
              "1");
    EXPECT_EQ(bothStores().server("orven.ts_getutcdate() - (now() AT TIME ZONE 'UTC') < interval '1 minute'"), "1");
}

}  // namespace
}  // namespace orvenmod::store::postgres
