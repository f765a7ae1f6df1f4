// Every kind of value to every type, on the server as on the embedded store.
#include <gtest/gtest.h>

#include "store/postgres/runtime/bothstores.h"

namespace orvenmod::store::postgres {
namespace {

const std::vector<std::string> kIntegerTypes = {"bit", "tinyint", "smallint", "int", "bigint"};
const std::vector<std::string> kDecimalTypes = {"decimal(18,4)", "decimal(5,2)", "decimal(38,0)",
                                                "decimal(9,9)",  "money",        "smallmoney"};
const std::vector<std::string> kTextTypes = {"char(3)",      "char(40)",      "varchar(1)", "varchar(3)", "varchar(30)",
                                             "varchar(max)", "text",          "nchar(4)",   "nchar(40)",  "nvarchar(3)",
                                             "nvarchar(30)", "nvarchar(max)", "ntext"};
const std::vector<std::string> kDateTypes = {"date", "time", "smalldatetime", "datetime"};
const std::vector<std::string> kOtherTypes = {"real",           "float", "binary(4)",       "varbinary(3)",
                                              "varbinary(max)", "image", "uniqueidentifier"};

std::vector<std::string> allTypes() {
    std::vector<std::string> all;
    for (const auto* types : {&kIntegerTypes, &kDecimalTypes, &kTextTypes, &kDateTypes, &kOtherTypes})
        all.insert(all.end(), types->begin(), types->end());
    return all;
}

std::vector<Value> valuesOf(const std::string& type, const std::vector<std::string>& texts) {
    std::vector<Value> values;
    for (const std::string& text : texts)
        values.push_back({type, text});
    return values;
}

void expectSameToAll(const std::vector<Value>& values) {
    for (const Value& value : values) {
        for (const std::string& to : allTypes())
            bothStores().expectSameConversion(value, to);
    }
}

const std::vector<std::string> kNumbersAsTexts = {"",
                                                  " ",
                                                  "0",
                                                  "12",
                                                  " \t12\r\n ",
                                                  "+12",
                                                  "-12",
                                                  "+-12",
                                                  "-+12",
                                                  "++12",
                                                  "-",
                                                  "+",
                                                  ".",
                                                  "-.",
                                                  "1.",
                                                  ".5",
                                                  "-.5",
                                                  "1.5",
                                                  "1e5",
                                                  "1E+2",
                                                  "1e",
                                                  "e5",
                                                  "1d5",
                                                  "-0",
                                                  "1e400",
                                                  "-1e400",
                                                  "1e-400",
                                                  "1e99999999999999999999",
                                                  "1e-99999999999999999999",
                                                  "0e99999999999",
                                                  "0.000000001e318",
                                                  "1000000000e-340",
                                                  "3.4e38",
                                                  "3.5e38",
                                                  "1e-50",
                                                  "12x",
                                                  "inf",
                                                  "nan",
                                                  "0x10",
                                                  "true",
                                                  "FALSE",
                                                  " True ",
                                                  "255",
                                                  "256",
                                                  "-1",
                                                  "32767",
                                                  "32768",
                                                  "-32769",
                                                  "2147483647",
                                                  "2147483648",
                                                  "-2147483649",
                                                  "9223372036854775807",
                                                  "9223372036854775808",
                                                  "99999999999999999999999",
                                                  "$12.50",
                                                  "-$1,234.5",
                                                  "$-1",
                                                  "$$1",
                                                  "¥5",
                                                  "￥5",
                                                  "€5",
                                                  "£ 5",
                                                  "12,5",
                                                  "1,2,3",
                                                  "2.345",
                                                  "2.5",
                                                  "-2.5",
                                                  "0.00005",
                                                  "0.999",
                                                  "999.994",
                                                  "999.995",
                                                  "214748.3647",
                                                  "214748.3648",
                                                  "-214748.3648",
                                                  "922337203685478"};

TEST(PostgresConversions, ReadNumbersFromTextsAsTheEmbeddedStore) {
    expectSameToAll(valuesOf("varchar(40)", kNumbersAsTexts));
    expectSameToAll(valuesOf("nvarchar(max)", {"abc", "12", "1.5"}));
}

TEST(PostgresConversions, ReadDatesFromTextsAsTheEmbeddedStore) {
    const std::vector<std::string> texts = {"2026-01-02",
                                            "2026-01-02 03:04:05",
                                            "2026-01-02 03:04:05.678",
                                            "2026-01-02 25:04:05",
                                            "2026-02-30",
                                            "2026-02-30 00:00:00",
                                            "2024-02-29",
                                            "20260102",
                                            "260102",
                                            "490102",
                                            "500102",
                                            "20260231",
                                            "2026",
                                            "202601",
                                            "2026-1-2",
                                            "2026/1/2",
                                            "2026.1.2",
                                            "26.1.2",
                                            "1/2/2026",
                                            "13/2/2026",
                                            "1/2/26",
                                            "1-2-2026",
                                            "1/2-2026",
                                            "2026-1",
                                            "2026-001-2",
                                            "Jan 2 2026",
                                            "2 jan 2026",
                                            "2026 January 2",
                                            "Jan 2026",
                                            "Jan-2-2026",
                                            "2-Jan-2026",
                                            "2-Jan-26",
                                            "Jan",
                                            "Ja 2 2026",
                                            "Janua 2 2026",
                                            "May 2, 2026",
                                            "jan feb 2026",
                                            "2026-01-02T03:04:05",
                                            "2026-01-02T03:04:05Z",
                                            "2026-01-02T03:04:05Zx",
                                            "T03:04",
                                            "3:04",
                                            "3:4:5",
                                            "3:04 PM",
                                            "12:00 am",
                                            "12:00pm",
                                            "13:00 PM",
                                            "0:30 PM",
                                            "3 pm",
                                            "3pmx",
                                            "3:04:05.5",
                                            "3:04:05:5",
                                            "3:04:05.1234",
                                            "3:04:05.1234567",
                                            "3:04:05.12345678",
                                            "3:04:",
                                            "3:",
                                            "3:004",
                                            "24:00",
                                            "23:59:60",
                                            "23:60",
                                            "2026-01-02 3:04:05.9 PM",
                                            "2026-01-02,3:04",
                                            "3:04 2026-01-02",
                                            "2026-01-02 2026-01-02",
                                            "2026-01-02 3:04 5:06",
                                            "hello",
                                            "2026-01-02x",
                                            "#1",
                                            "99999999",
                                            "123456789",
                                            "0000-01-01",
                                            "0001-01-01",
                                            "1752-12-31",
                                            "1753-01-01",
                                            "1899-12-31",
                                            "1900-01-01",
                                            "2079-06-06 23:59:29.998",
                                            "2079-06-06 23:59:30",
                                            "2079-06-07",
                                            "9999-12-31 23:59:59.997",
                                            "9999-12-31 23:59:59.999",
                                            "2026-01-02 00:00:29.998",
                                            "2026-01-02 00:00:29.999",
                                            "2026-01-02 00:00:00.001",
                                            "2026-01-02 00:00:00.002",
                                            "2026-01-02 00:00:00.995",
                                            "2026-01-02 23:59:59.999",
                                            "二〇二六年"};
    for (const Value& value : valuesOf("varchar(40)", texts)) {
        for (const std::string& to : kDateTypes) {
            for (const int style : {0, 1, 3, 4, 10, 101, 103, 105, 110, 120})
                bothStores().expectSameConversion(value, to, style);
        }
    }
}

TEST(PostgresConversions, CutAndPadTextsByTheCodePage) {
    expectSameToAll(
        valuesOf("varchar(60)", {"中文a", "a中文", "中", "é", "😀b", "abc   ", "  ", "abcdefghij",
                                 "A0EEBC99-9C0B-4EF8-BB6D-6BB9BD380A11", "{a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11}",
                                 "a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11xyz", "a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a1g"}));
}

TEST(PostgresConversions, RefuseToAssignWhatIsTooLong) {
    for (const std::string text : {"", "abc", "abcd", "abc ", "中文", "中文中文中文", "中文a ", "a中 ", "😀😀"}) {
        for (const std::string& to : kTextTypes)
            bothStores().expectSameAssignment({"varchar(60)", text}, to);
    }
    for (const std::string& to : kTextTypes) {
        bothStores().expectSameAssignment({"int", "12345"}, to);
        bothStores().expectSameAssignment({"decimal(9,2)", "1.5"}, to);
        bothStores().expectSameAssignment({"float", "1.5"}, to);
        bothStores().expectSameAssignment({"datetime", "2026-01-02 03:04:05"}, to);
        bothStores().expectSameAssignment({"date", "2026-01-02 00:00:00"}, to);
        bothStores().expectSameAssignment({"time", "03:04:05"}, to);
    }
    for (const std::string to : {"binary(4)", "varbinary(3)", "varbinary(max)", "image"}) {
        for (const std::string bytes : {"", "00", "616263", "6162636465"})
            bothStores().expectSameAssignment({"varbinary(max)", bytes}, to);
    }
}

TEST(PostgresConversions, BringIntegersIntoEveryType) {
    expectSameToAll(valuesOf("bit", {"0", "1"}));
    expectSameToAll(valuesOf("tinyint", {"0", "255"}));
    expectSameToAll(valuesOf("smallint", {"-32768", "-1", "300", "32767"}));
    expectSameToAll(valuesOf("int", {"0", "1", "-1", "255", "256", "12345", "46000", "2147483647", "-2147483648"}));
    expectSameToAll(valuesOf("bigint", {"0", "5", "2147483648", "9007199254740993", "9223372036854775807",
                                        "-9223372036854775808", "3000000", "-53690", "-53691"}));
}

TEST(PostgresConversions, BringDecimalsIntoEveryType) {
    expectSameToAll(valuesOf("decimal(18,4)", {"0", "1.5", "-1.5", "2.9", "-2.9", "0.5", "0.4999", "12345.6789",
                                               "-0.0001", "99999.995", "255.9", "3000000.5", "2958463.9999"}));
    expectSameToAll(valuesOf("decimal(5,2)", {"1.5", "-999.99", "2.675", "0.005"}));
    expectSameToAll(valuesOf("decimal(38,0)", {"5", "-32769", "123456789012345"}));
    expectSameToAll(valuesOf("money", {"2.5", "-2.5", "1.49995", "1234.567", "-1234567.891", "0", "2147483647.5"}));
    expectSameToAll(valuesOf("smallmoney", {"2.5", "214748.3647", "0.00005"}));
}

TEST(PostgresConversions, BringFloatsIntoEveryType) {
    expectSameToAll(valuesOf("float", {"0",
                                       "1.5",
                                       "-1.5",
                                       "2.5",
                                       "1e10",
                                       "1e-05",
                                       "0.0001",
                                       "0.00012345678",
                                       "123456.7",
                                       "1234567.5",
                                       "999999.5",
                                       "1000000",
                                       "1e15",
                                       "1e16",
                                       "1e22",
                                       "1.2345678901234567e25",
                                       "0.1",
                                       "0.3333333333333333",
                                       "1e300",
                                       "-1e300",
                                       "3.4e38",
                                       "3.5e38",
                                       "1e-320",
                                       "9.2233720368547758e18",
                                       "9.3e18",
                                       "2147483647.9",
                                       "2147483648.5",
                                       "45000.75",
                                       "-0.5",
                                       "0.0416666666"}));
    expectSameToAll(valuesOf("real", {"1.5", "3.4e38", "16777217", "0.1"}));
}

TEST(PostgresConversions, WriteNumbersInEveryStyle) {
    for (const int style : {0, 1, 2, 3, 126, 128, 7}) {
        for (const std::string to : {"varchar(40)", "varchar(8)", "nvarchar(40)"}) {
            for (const std::string text : {"0", "1.5", "-1234.567", "1234567.8912", "999", "100000", "-0.004"}) {
                bothStores().expectSameConversion({"money", text}, to, style);
                bothStores().expectSameConversion({"decimal(18,3)", text}, to, style);
                bothStores().expectSameConversion({"float", text}, to, style);
                bothStores().expectSameConversion({"real", text}, to, style);
            }
            bothStores().expectSameConversion({"int", "1234567"}, to, style);
        }
    }
}

TEST(PostgresConversions, BringDatesIntoEveryType) {
    expectSameToAll(valuesOf(
        "datetime", {"1753-01-01 00:00:00", "1899-12-31 12:00:00", "1899-12-31 11:59:59", "1900-01-01 00:00:00",
                     "1900-01-02 12:00:00", "2026-01-02 03:04:05", "2000-02-29 11:59:59.993", "2026-11-12 12:00:00.003",
                     "2079-06-06 23:59:59", "9999-12-31 23:59:59.997"}));
    expectSameToAll(valuesOf("smalldatetime", {"1900-01-01 00:00:00", "2079-06-06 23:59:00"}));
    expectSameToAll(valuesOf("date", {"0001-01-01 00:00:00", "1752-12-31 00:00:00", "2026-01-02 00:00:00"}));
    expectSameToAll(valuesOf("time", {"00:00:00", "13:05:09.123", "23:59:59.999"}));
}

TEST(PostgresConversions, WriteDatesInEveryStyle) {
    for (int style = 0; style <= 131; ++style) {
        bothStores().expectSameConversion({"datetime", "2026-01-02 03:04:05"}, "varchar(40)", style);
        bothStores().expectSameConversion({"datetime", "1999-11-12 13:14:15.017"}, "char(10)", style);
        bothStores().expectSameConversion({"datetime", "2026-11-12 00:00:00"}, "nvarchar(40)", style);
        bothStores().expectSameConversion({"date", "2026-01-02 00:00:00"}, "varchar(40)", style);
        bothStores().expectSameConversion({"date", "0987-12-31 00:00:00"}, "varchar(6)", style);
        bothStores().expectSameConversion({"time", "12:30:00.500"}, "varchar(40)", style);
        bothStores().expectSameConversion({"time", "13:05:09.123"}, "varchar(6)", style);
    }
}

TEST(PostgresConversions, TakeBinaryContentsByTheirBytes) {
    expectSameToAll(valuesOf("varbinary(max)", {"", "01", "61", "616263", "6162636465", "e4b8ad"}));
    for (const std::string& to : kIntegerTypes) {
        for (const std::string bytes : {"00", "7fffffff", "ff", "ffff", "80", "8000", "ffffffff", "80000000",
                                        "ffffffffffffffff", "0102030405060708", "010203040506070809"})
            bothStores().expectSameConversion({"varbinary(max)", bytes}, to);
    }
}

TEST(PostgresConversions, OfNullAreNull) {
    for (const std::string& from : allTypes()) {
        for (const std::string& to : allTypes())
            bothStores().expectSameConversion(nullOf(from), to);
        bothStores().expectSameAssignment(nullOf(from), "varchar(3)");
    }
}

TEST(PostgresConversions, ThatAreTriedGiveNullWhereTheyFail) {
    const std::vector<Value> values = {{"varchar(9)", "x"},
                                       {"varchar(9)", "12"},
                                       {"int", "99999"},
                                       {"decimal(18,4)", "99999.5"},
                                       {"float", "1e300"},
                                       {"datetime", "9999-12-31 00:00:00"},
                                       {"date", "0001-01-01 00:00:00"},
                                       {"time", "03:04:05"},
                                       {"varbinary(max)", "61"}};
    for (const Value& value : values) {
        for (const std::string& to : allTypes())
            bothStores().expectSameAttempt(value, to);
    }
}

}  // namespace
}  // namespace orvenmod::store::postgres
