// Arithmetic and functions of numbers, on the server as on the embedded store.
#include <gtest/gtest.h>

#include <limits>

#include "store/postgres/runtime/bothstores.h"

namespace orvenmod::store::postgres {
namespace {

constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();

TEST(PostgresNumbers, DivideWholeNumbersTowardsZero) {
    for (const std::int64_t a : {0L, 7L, -7L, kGreatest, kLeast}) {
        for (const std::int64_t b : {0L, 1L, -1L, 2L, -2L, 3L, kGreatest, kLeast}) {
            bothStores().expectSame("ts_idiv", {integer(a), integer(b)});
            bothStores().expectSame("ts_imod", {integer(a), integer(b)});
        }
    }
}

TEST(PostgresNumbers, CutADecimalQuotientToItsScale) {
    for (const std::string a : {"0", "1", "2", "-2", "0.3", "10.5", "-7.25", "123456.789", "99999999"}) {
        for (const std::string b : {"0", "1", "3", "-3", "0.1", "0.0001", "7.5"}) {
            for (const auto& [p, s] : {std::pair{38, 6}, std::pair{10, 4}, std::pair{9, 0}, std::pair{12, 2}})
                bothStores().expectSame(
                    "ts_decdiv", {decimal(a), decimal(b), {"int", std::to_string(p)}, {"int", std::to_string(s)}});
            bothStores().expectSame("ts_decmod", {decimal(a), decimal(b)});
        }
    }
}

TEST(PostgresNumbers, OfNullsHaveNoQuotient) {
    const Value p{"int", "9"}, s{"int", "2"}, null = nullOf("decimal(38,10)");
    bothStores().expectSame("ts_decdiv", {null, decimal("2"), p, s});
    bothStores().expectSame("ts_decdiv", {decimal("2"), null, p, s});
    bothStores().expectSame("ts_decimal", {null, p, s});
    // Nor by zero.
    bothStores().expectSame("ts_decdiv", {null, decimal("0"), p, s});
    bothStores().expectSame("ts_decmod", {null, decimal("0")});
    bothStores().expectSame("ts_idiv", {nullOf("bigint"), integer(0)});
    bothStores().expectSame("ts_imod", {nullOf("bigint"), integer(0)});
    bothStores().expectSame("ts_div", {nullOf("float"), floating("0")});
}

TEST(PostgresNumbers, KeepAllDigitsOfADecimal) {
    EXPECT_EQ(bothStores().server("orven.ts_decdiv(2, 3, 38, 37)"),
              "\x01"
              "0." +
                  std::string(37, '6'));
    EXPECT_EQ(bothStores().server("orven.ts_decdiv(12345678901234567890123456789012, 1.000001, 38, 6)"),
              "\x01"
              "12345666555568012322111134677877.322122");
    EXPECT_EQ(bothStores().server("orven.ts_decimal(12345678901234567890.123455, 38, 5)"),
              "\x01"
              "12345678901234567890.12346");
    EXPECT_EQ(bothStores().server("orven.ts_text(12345678901234567890.1234, 'decimal(38,4)', 'varchar(40)')"),
              "12345678901234567890.1234");
}

TEST(PostgresNumbers, StayWithinTheirPrecision) {
    for (const std::string v : {"0", "1.005", "-1.005", "2.675", "99.994", "99.995", "-99.995", "100", "0.00005"}) {
        for (const auto& [p, s] : {std::pair{4, 2}, std::pair{38, 2}, std::pair{5, 4}, std::pair{2, 0}})
            bothStores().expectSame("ts_decimal", {decimal(v), {"int", std::to_string(p)}, {"int", std::to_string(s)}});
    }
    for (const std::string type : {"bit", "tinyint", "smallint", "int", "bigint"}) {
        for (const std::int64_t v :
             {0L, 1L, -1L, 255L, 256L, 32768L, -32769L, 2147483648L, -2147483649L, kLeast, kGreatest})
            bothStores().expectSame("ts_range", {integer(v), text(type)});
    }
    EXPECT_EQ(bothStores().server("orven.ts_range(9223372036854775808, 'int')"), "fails 8115 (expression|bigint)");
}

TEST(PostgresNumbers, HaveFunctionsOfFloats) {
    for (const std::string name :
         {"sqrt", "exp", "log", "log10", "sin", "cos", "tan", "cot", "asin", "acos", "atan", "degrees", "radians"}) {
        for (const std::string x :
             {"0", "1", "-1", "0.5", "-0.5", "2", "10", "709.7", "710", "-710", "-750", "1e300", "-1e300"}) {
            // Far from zero each system reduces an angle in its own way.
            if ((name == "sin" || name == "cos" || name == "tan" || name == "cot") && x.size() > 4) continue;
            bothStores().expectSame("ts_" + name, {floating(x)});
        }
        bothStores().expectSame("ts_" + name, {nullOf("float")});
    }
    for (const std::string y : {"0", "1", "-1", "2.5"}) {
        for (const std::string x : {"0", "1", "-1", "8"}) {
            bothStores().expectSame("ts_atn2", {floating(y), floating(x)});
            bothStores().expectSame("ts_log", {floating(y), floating(x)});
            bothStores().expectSame("ts_div", {floating(y), floating(x)});
        }
    }
    for (const std::string x : {"1e-300", "1e308", "-1e308"}) {
        for (const std::string y : {"3", "1e-100"})
            bothStores().expectSame("ts_div", {floating(x), floating(y)});
    }
    bothStores().expectSame("ts_pi", {});
}

TEST(PostgresNumbers, AreRoundedOrCut) {
    for (const std::int64_t n : {0L, 1L, 2L, 4L, -1L, -2L, -5L, 1000L, -1000L, kGreatest, kLeast}) {
        for (const std::string v : {"0", "2.675", "-2.675", "1234.5678", "-1234.5678", "0.05", "999.95"}) {
            bothStores().expectSame("ts_round", {decimal(v), integer(n)});
            bothStores().expectSame("ts_round", {floating(v), integer(n)});
            bothStores().expectSame("ts_round", {decimal(v), integer(n), integer(1)});
            bothStores().expectSame("ts_round", {floating(v), integer(n), integer(1)});
        }
        for (const std::int64_t v : {0L, 5L, 1250L, -1250L, kGreatest}) {
            bothStores().expectSame("ts_round", {integer(v), integer(n)});
            bothStores().expectSame("ts_round", {integer(v), integer(n), integer(1)});
        }
    }
    for (const std::string name : {"ts_floor", "ts_ceiling", "ts_sign", "ts_abs"}) {
        for (const std::string v : {"0", "2.5", "-2.5", "-0.1", "100"}) {
            bothStores().expectSame(name, {decimal(v)});
            bothStores().expectSame(name, {floating(v)});
        }
        for (const std::int64_t v : {0L, 5L, -5L, kGreatest, kLeast})
            bothStores().expectSame(name, {integer(v)});
        bothStores().expectSame(name, {nullOf("bigint")});
        bothStores().expectSame(name, {nullOf("decimal(9,2)")});
        bothStores().expectSame(name, {nullOf("float")});
    }
}

TEST(PostgresNumbers, AreRaisedToPowersInTheirOwnType) {
    for (const std::string exponent : {"0", "1", "2", "-1", "0.5", "10", "1000", "-1000"}) {
        for (const std::string base : {"0", "1", "2", "-2", "10", "46341"}) {
            const Value power{"float", exponent};
            bothStores().expectSame("ts_power", {{"bigint", base}, power, text("int")});
            bothStores().expectSame("ts_power", {{"bigint", base}, power, text("bigint")});
            bothStores().expectSame("ts_power", {decimal(base), power, text("decimal(9,2)")});
            bothStores().expectSame("ts_power", {floating(base), power, text("float")});
        }
    }
    bothStores().expectSame("ts_power", {nullOf("bigint"), floating("2"), text("int")});
}

TEST(PostgresNumbers, OfOneSeedAreTheSameByChance) {
    EXPECT_EQ(bothStores().server("orven.ts_rand(5) = orven.ts_rand(5)"), "1");
    EXPECT_EQ(bothStores().server("orven.ts_rand(5) = orven.ts_rand(6)"), "0");
    EXPECT_EQ(bothStores().server("orven.ts_rand() BETWEEN 0 AND 1"), "1");
}

TEST(PostgresNumbers, HaveTheSpreadOfTheirRows) {
    const std::string rows = " FROM (SELECT 1 AS x UNION ALL SELECT 4 UNION ALL SELECT NULL UNION ALL SELECT 9) AS t";
    const std::string one = " FROM (SELECT 1 AS x) AS t";
    for (const std::string name : {"ts_stdev", "ts_stdevp", "ts_var", "ts_varp"}) {
        for (const std::string& from : {rows, one}) {
            const std::string embedded = bothStores().embedded("round(" + name + "(x), 12)" + from);
            EXPECT_EQ(
                bothStores().server("(SELECT round(orven." + name + "(x)::numeric, 12)::double precision" + from + ")"),
                embedded);
        }
    }
}

TEST(PostgresNumbers, OfAQueryThatStandsForAValueAreTheOnlyRow) {
    EXPECT_EQ(bothStores().server("(SELECT orven.ts_single(x) FROM (VALUES (5)) AS t (x))"), "5");
    EXPECT_EQ(bothStores().server("(SELECT orven.ts_single(x) FROM (VALUES ('a'::text)) AS t (x))"), "a");
    EXPECT_EQ(bothStores().server("(SELECT orven.ts_single(x) FROM (VALUES (5)) AS t (x) WHERE x > 5)"), "null");
    EXPECT_EQ(bothStores().server("(SELECT orven.ts_single(x) FROM (VALUES (5), (6)) AS t (x))"), "fails 512 ()");
}

}  // namespace
}  // namespace orvenmod::store::postgres
