#include "store/tsql/dates.h"

#include "conversions.h"

namespace orvenmod::store::tsql::test {
namespace {

TEST(TextToDate, ReadsTheFormsThatPeopleWrite) {
    for (const char* value : {"20261120", "2026-11-20", "2026/11/20", "2026.11.20", "11/20/2026", "11-20-2026",
                              "261120", "26-11-20", "Nov 20 2026", "20 Nov 2026", "November 20, 2026", "2026 Nov 20",
                              "20-Nov-2026", " 2026-11-20 ", "2026-11-20T00:00:00", "2026-11-20 0:00"}) {
        EXPECT_EQ(toDate(value), "2026-11-20 00:00:00") << value;
    }
    EXPECT_EQ(toDate("2026-1-2"), "2026-01-02 00:00:00");
    EXPECT_EQ(toDate("2026/1/2"), "2026-01-02 00:00:00");
}

TEST(TextToDate, ReadsTheTimeBehindIt) {
    EXPECT_EQ(toDate("2026-11-20 10:20"), "2026-11-20 10:20:00");
    EXPECT_EQ(toDate("2026-11-20 10:20:30"), "2026-11-20 10:20:30");
    EXPECT_EQ(toDate("20261120 10:20:30"), "2026-11-20 10:20:30");
    EXPECT_EQ(toDate("2026-11-20T10:20:30.500"), "2026-11-20 10:20:30.500");
    EXPECT_EQ(toDate("2026-11-20T10:20:30Z"), "2026-11-20 10:20:30");
    EXPECT_EQ(toDate("2026-11-20 1:20 PM"), "2026-11-20 13:20:00");
    EXPECT_EQ(toDate("2026-11-20 12:05AM"), "2026-11-20 00:05:00");
    EXPECT_EQ(toDate("2026-11-20 3pm"), "2026-11-20 15:00:00");
    EXPECT_EQ(toDate("Nov 20 2026 10:20AM"), "2026-11-20 10:20:00");
}

TEST(TextToDate, TakesNoDateForTheFirstDay) {
    EXPECT_EQ(toDate(""), "1900-01-01 00:00:00");
    EXPECT_EQ(toDate("  "), "1900-01-01 00:00:00");
    EXPECT_EQ(toDate("10:20"), "1900-01-01 10:20:00");
}

TEST(TextToDate, RoundsToThreeHundredthsOfASecond) {
    EXPECT_EQ(toDate("2026-01-01 00:00:00.001"), "2026-01-01 00:00:00");
    EXPECT_EQ(toDate("2026-01-01 00:00:00.002"), "2026-01-01 00:00:00.003");
    EXPECT_EQ(toDate("2026-01-01 00:00:00.005"), "2026-01-01 00:00:00.007");
    EXPECT_EQ(toDate("2026-01-01 00:00:00.009"), "2026-01-01 00:00:00.010");
    EXPECT_EQ(toDate("2026-12-31 23:59:59.999"), "2027-01-01 00:00:00");
    EXPECT_EQ(toDate("2026-01-01 00:00:00.5"), "2026-01-01 00:00:00.500");
}

TEST(TextToDate, RefusesWhatIsNoDate) {
    for (const char* value : {"abc", "2026-11", "2026-11-20x", "20261", "2026-11-20 10:20:30:40:50", "1.5", "-5",
                              "今天", "2026-11-20 25", "13 14 15", "Foo 20 2026", "2026-11-20 10:20:30.1234567"}) {
        EXPECT_EQ(refused(value, "datetime"), 241) << value;
    }
}

TEST(TextToDate, RefusesADayThatDoesNotExist) {
    for (const char* value : {"2026-02-30", "2026-13-01", "20260230", "2025-02-29", "2026-11-20 25:00",
                              "2026-11-20 10:61", "1752-12-31", "0001-01-01", "2026-00-10"}) {
        EXPECT_EQ(refused(value, "datetime"), 242) << value;
    }
    EXPECT_EQ(toDate("2024-02-29"), "2024-02-29 00:00:00");
    EXPECT_EQ(refused("2026-02-30", "date"), 241);
    EXPECT_EQ(refused("2080-01-01", "smalldatetime"), 242);
}

TEST(TextToDate, FollowsTheStyleWhereTheOrderIsUnclear) {
    EXPECT_EQ(toDate("02/01/2026", "datetime", 103), "2026-01-02 00:00:00");
    EXPECT_EQ(toDate("02/01/2026", "datetime", 101), "2026-02-01 00:00:00");
    EXPECT_EQ(toDate("02.01.26", "datetime", 4), "2026-01-02 00:00:00");
}

TEST(DateTypes, KeepWhatTheyHold) {
    EXPECT_EQ(toDate("2026-11-20 10:20:30", "date"), "2026-11-20 00:00:00");
    EXPECT_EQ(toDate("0999-01-01", "date"), "0999-01-01 00:00:00");
    EXPECT_EQ(toDate("2026-11-20 10:20:30", "time"), "10:20:30");
    EXPECT_EQ(toDate("2026-11-20 10:20:29", "smalldatetime"), "2026-11-20 10:20:00");
    EXPECT_EQ(toDate("2026-11-20 10:20:30", "smalldatetime"), "2026-11-20 10:21:00");
    EXPECT_EQ(converted(text("10:20:30"), "time", "datetime").text, "1900-01-01 10:20:30");
}

TEST(NumberToDate, CountsDaysFromTheFirst) {
    EXPECT_EQ(converted(integer(1), "int", "datetime").text, "1900-01-02 00:00:00");
    EXPECT_EQ(converted(real(1.5), "float", "datetime").text, "1900-01-02 12:00:00");
    EXPECT_EQ(converted(integer(-1), "int", "datetime").text, "1899-12-31 00:00:00");
    EXPECT_EQ(refused(integer(9'000'000), "int", "datetime"), 8115);
    EXPECT_EQ(refused(integer(1), "int", "date"), 206);
}

TEST(DateToNumber, CountsDaysFromTheFirst) {
    EXPECT_EQ(converted(text("1900-01-02 00:00:00"), "datetime", "int").integer, 1);
    EXPECT_EQ(converted(text("1900-01-02 12:00:00"), "datetime", "int").integer, 2);
    EXPECT_DOUBLE_EQ(converted(text("1900-01-02 12:00:00"), "datetime", "float").real, 1.5);
    EXPECT_EQ(refused(text("1900-01-02 00:00:00"), "date", "int"), 529);
}

TEST(Calendar, GoesThereAndBackOverEveryDayOfFourCenturies) {
    DateTime date{1753, 1, 1, 0, 0, 0, 0};
    for (std::int64_t day = dayNumber(date); day < dayNumber({2160, 1, 1, 0, 0, 0, 0}); ++day) {
        ASSERT_EQ(fromMilliseconds(day * kMillisecondsADay), date) << day;
        if (++date.day > daysInMonth(date.year, date.month)) {
            date.day = 1;
            if (++date.month > 12) {
                date.month = 1;
                ++date.year;
            }
        }
    }
}

TEST(DateAdd, KeepsTheDayWithinItsMonth) {
    const DateTime date{2026, 1, 31, 10, 0, 0, 0};
    EXPECT_EQ(printStored(dateAdd(DatePart::month, 1, date)), "2026-02-28 10:00:00");
    EXPECT_EQ(printStored(dateAdd(DatePart::year, -2, {2024, 2, 29, 0, 0, 0, 0})), "2022-02-28 00:00:00");
    EXPECT_EQ(printStored(dateAdd(DatePart::quarter, 1, date)), "2026-04-30 10:00:00");
    EXPECT_EQ(printStored(dateAdd(DatePart::week, -1, date)), "2026-01-24 10:00:00");
    EXPECT_EQ(printStored(dateAdd(DatePart::hour, 15, date)), "2026-02-01 01:00:00");
    EXPECT_EQ(failureOf([&] { dateAdd(DatePart::year, 9000, date); }), 517);
    EXPECT_EQ(failureOf([&] { dateAdd(DatePart::day, INT64_MAX, date); }), 8115);
}

TEST(DateDifference, CountsTheBoundariesBetween) {
    const DateTime from{2025, 12, 31, 23, 59, 59, 0};
    const DateTime to{2026, 1, 1, 0, 0, 0, 0};
    EXPECT_EQ(dateDifference(DatePart::year, from, to), 1);
    EXPECT_EQ(dateDifference(DatePart::month, from, to), 1);
    EXPECT_EQ(dateDifference(DatePart::day, from, to), 1);
    EXPECT_EQ(dateDifference(DatePart::hour, from, to), 1);
    EXPECT_EQ(dateDifference(DatePart::second, to, from), -1);
    EXPECT_EQ(dateDifference(DatePart::week, {2026, 7, 11, 0, 0, 0, 0}, {2026, 7, 12, 0, 0, 0, 0}), 1);
    EXPECT_EQ(failureOf([&] { dateDifference(DatePart::millisecond, {1900, 1, 1, 0, 0, 0, 0}, to); }), 535);
}

TEST(DateParts, AreThoseOfTheCalendar) {
    const DateTime date{2026, 7, 11, 1, 2, 3, 4};
    EXPECT_EQ(datePartValue(DatePart::quarter, date), 3);
    EXPECT_EQ(datePartValue(DatePart::dayOfYear, date), 192);
    EXPECT_EQ(datePartValue(DatePart::week, date), 28);
    EXPECT_EQ(datePartValue(DatePart::weekday, date), 7);
    EXPECT_EQ(datePartName(DatePart::month, date), "July");
    EXPECT_EQ(datePartName(DatePart::weekday, date), "Saturday");
    EXPECT_EQ(datePartName(DatePart::year, date), "2026");
    EXPECT_EQ(datePartOf("YYYY"), DatePart::year);
    EXPECT_EQ(datePartOf("fortnight"), std::nullopt);
}

}  // namespace
}  // namespace orvenmod::store::tsql::test
