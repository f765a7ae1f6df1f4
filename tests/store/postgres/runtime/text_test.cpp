// Functions of texts, on the server as on the embedded store.
#include <gtest/gtest.h>

#include <limits>

#include "store/postgres/runtime/bothstores.h"

namespace orvenmod::store::postgres {
namespace {

constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();

const std::vector<std::string> kTexts = {"",       " ",    "abc", "ABC",        "abc  ",
                                         "a中文b", "中文", "😀é",  "a]b'\"`)>}", "a\\b%c_d"};
const std::vector<std::int64_t> kCounts = {-2, -1, 0, 1, 2, 3, 100, kGreatest};

TEST(PostgresTexts, AreTakenApartByCharacters) {
    for (const std::string& t : kTexts) {
        for (const std::int64_t n : kCounts) {
            bothStores().expectSame("ts_left", {text(t), integer(n)});
            bothStores().expectSame("ts_right", {text(t), integer(n)});
            for (const std::int64_t start : kCounts) {
                bothStores().expectSame("ts_substring", {text(t), integer(start), integer(n)});
                bothStores().expectSame("ts_stuff", {text(t), integer(start), integer(n), text("x中")});
            }
        }
        bothStores().expectSame("ts_reverse", {text(t)});
    }
    bothStores().expectSame("ts_stuff", {text("abc"), integer(2), integer(1), nullOf("varchar(9)")});
    bothStores().expectSame("ts_stuff", {nullOf("varchar(9)"), integer(2), integer(1), text("x")});
    bothStores().expectSame("ts_left", {nullOf("varchar(9)"), integer(-1)});
    bothStores().expectSame("ts_left", {text("abc"), nullOf("int")});
    bothStores().expectSame("ts_substring", {nullOf("varchar(9)"), integer(1), integer(-1)});
}

TEST(PostgresTexts, AreFoundWithoutRegardToCase) {
    for (const std::string t : {"", "abcABC", "中文b中文B", "a.b*c", "x\\1y\\", "äÄ"}) {
        for (const std::string find : {"", "b", "B", "bc", "中", "文B", ".", "*", "\\", "Ä", "zz"}) {
            for (const std::string with : {"", "X", "\\1", "&", "中"})
                bothStores().expectSame("ts_replace", {text(t), text(find), text(with)});
            bothStores().expectSame("ts_charindex", {text(find), text(t)});
            for (const std::int64_t start : {-1L, 0L, 1L, 3L, 100L, kGreatest})
                bothStores().expectSame("ts_charindex", {text(find), text(t), integer(start)});
        }
    }
    bothStores().expectSame("ts_charindex", {text("a"), nullOf("varchar(9)")});
    bothStores().expectSame("ts_charindex", {text(""), nullOf("varchar(9)")});
    bothStores().expectSame("ts_replace", {nullOf("varchar(9)"), text("a"), text("b")});
    bothStores().expectSame("ts_replace", {text("a"), text("a"), nullOf("varchar(9)")});
    bothStores().expectSame("ts_replace", {text("a"), text(""), nullOf("varchar(9)")});
}

TEST(PostgresTexts, AreRepeatedUpToTheLongest) {
    for (const std::string t : {"", "a", "ab中", "中"}) {
        for (const std::int64_t n : {-1L, 0L, 1L, 3L, 3000L, 8000L, 9000L, 5000000000L})
            bothStores().expectSame("ts_replicate", {text(t), integer(n)});
    }
    for (const std::int64_t n : {-1L, 0L, 3L, 9000L})
        bothStores().expectSame("ts_space", {integer(n)});
    bothStores().expectSame("ts_space", {nullOf("int")});
}

TEST(PostgresTexts, OfNumbersAreAlignedRight) {
    for (const std::string v :
         {"0", "12345.6", "-12345.6", "0.5", "-0.5", "0.05", "999.96", "1e20", "1e301", "-0.004"}) {
        bothStores().expectSame("ts_str", {floating(v)});
        for (const std::int64_t length : {-1L, 0L, 1L, 3L, 4L, 6L, 7L, 8L, 30L}) {
            bothStores().expectSame("ts_str", {floating(v), integer(length)});
            for (const std::int64_t decimals : {-1L, 0L, 1L, 2L, 20L})
                bothStores().expectSame("ts_str", {floating(v), integer(length), integer(decimals)});
        }
    }
}

TEST(PostgresTexts, ChangeTheirCaseBeyondAsciiToo) {
    for (const std::string t : {"abcÀéßµ×÷ÿ", "ΑΒΓαβγςΣΩΪ", "АБВабвЁёЏџҐ", "ＡＢａｂ１", "中文", "ĀāŁł", "İıÞþÐð"}) {
        bothStores().expectSame("ts_upper", {text(t)});
        bothStores().expectSame("ts_lower", {text(t)});
    }
}

TEST(PostgresTexts, HaveCodes) {
    for (const std::string t : {"", "a", "中文", "😀", "é"}) {
        bothStores().expectSame("ts_ascii", {text(t)});
        bothStores().expectSame("ts_unicode", {text(t)});
        bothStores().expectSame("ts_soundex", {text(t)});
    }
    for (const std::int64_t n : {-1, 1, 65, 128, 255, 256, 20013, 65535, 65536}) {
        bothStores().expectSame("ts_char", {integer(n)});
        bothStores().expectSame("ts_nchar", {integer(n)});
    }
    for (const std::string t : {"Ashcraft", "Tymczak", "Pfister", "Robert", "a1b", "h", "WWW"}) {
        bothStores().expectSame("ts_soundex", {text(t)});
        bothStores().expectSame("ts_difference", {text(t), text("Rupert")});
    }
}

TEST(PostgresTexts, AreQuoted) {
    for (const std::string& t : kTexts) {
        bothStores().expectSame("ts_quotename", {text(t)});
        for (const std::string quote : {"[", "]", "'", "\"", "(", ">", "{", "`", "", "x", "[]", "中"})
            bothStores().expectSame("ts_quotename", {text(t), text(quote)});
    }
    bothStores().expectSame("ts_quotename", {text(std::string(128, 'a'))});
    bothStores().expectSame("ts_quotename", {text(std::string(129, 'a'))});
}

TEST(PostgresTexts, AreJoinedWithoutNulls) {
    bothStores().expectSame("ts_concat", {text("a"), nullOf("varchar(9)"), text("中"), text("")});
    bothStores().expectSame("ts_concat", {nullOf("varchar(9)"), nullOf("varchar(9)")});
}

TEST(PostgresTexts, AreNumbersOrDatesOrNot) {
    for (const std::string t :
         {"",     " ",   "1",    " 1 ",  "-",   "+",    "+-",   "-+1",  ".",     "-.",    "$",  "$.",
          "$-1",  "-$1", "-$-1", "$1e5", "1e5", "1e+5", "1e",   "1d-5", "1.5.5", "1,234", ",1", "1,,2",
          "1.,2", "￥5", "€",    "12x",  "inf", "中",   ".5e1", ".e1",  "5.e1",  "$ 1"})
        bothStores().expectSame("ts_isnumeric", {text(t)});
    for (const std::string t : {"", " ", "2026-01-02", "2026-02-30", "1752-12-31", "hello", "9999-12-31 23:59:59.999",
                                "3:04", "Jan 2 2026", "2026"})
        bothStores().expectSame("ts_isdate", {text(t)});
    bothStores().expectSame("ts_isnumeric", {nullOf("varchar(9)")});
    bothStores().expectSame("ts_isdate", {nullOf("varchar(9)")});
}

TEST(PostgresTexts, HaveALengthInBytes) {
    for (const std::string& t : kTexts) {
        bothStores().expectSame("ts_datalength", {text(t), text("varchar(30)")});
        bothStores().expectSame("ts_datalength", {text(t), text("nvarchar(30)")});
        bothStores().expectSame("ts_datalength", {text(t), text("ntext")});
    }
    for (const std::string type : {"bit", "tinyint", "smallint", "int", "bigint"})
        bothStores().expectSame("ts_datalength", {integer(1), text(type)});
    for (const std::string type :
         {"decimal(9,2)", "decimal(10,2)", "decimal(20,2)", "decimal(38,2)", "money", "smallmoney"})
        bothStores().expectSame("ts_datalength", {decimal("1.5"), text(type)});
    for (const std::string type : {"real", "float"})
        bothStores().expectSame("ts_datalength", {floating("1.5"), text(type)});
    for (const std::string type : {"date", "smalldatetime", "datetime"})
        bothStores().expectSame("ts_datalength", {moment("2026-01-02 00:00:00"), text(type)});
    bothStores().expectSame("ts_datalength", {timeOfDay("03:04:05"), text("time")});
    bothStores().expectSame("ts_datalength", {{"varbinary(9)", "010203"}, text("varbinary(9)")});
    bothStores().expectSame("ts_datalength", {{"uniqueidentifier", "A"}, text("uniqueidentifier")});
    bothStores().expectSame("ts_datalength", {nullOf("varchar(9)"), text("varchar(9)")});
    bothStores().expectSame("ts_datalength", {nullOf("int"), text("int")});
}

TEST(PostgresFunctions, TakeNullsAsTheEmbeddedStore) {
    const Value t = text("abc");
    const Value n = integer(2);
    const Value x = floating("0.5");
    const std::vector<std::pair<std::string, std::vector<Value>>> calls = {
        {"ts_left", {t, n}},
        {"ts_right", {t, n}},
        {"ts_substring", {t, n, n}},
        {"ts_replace", {t, t, t}},
        {"ts_replace", {t, text("1"), t}},
        {"ts_replace", {t, text(""), t}},
        {"ts_charindex", {t, t}},
        {"ts_charindex", {t, t, n}},
        {"ts_patindex", {t, t}},
        {"ts_reverse", {t}},
        {"ts_replicate", {t, n}},
        {"ts_space", {n}},
        {"ts_stuff", {t, n, n, t}},
        {"ts_str", {x}},
        {"ts_str", {x, n}},
        {"ts_str", {x, n, n}},
        {"ts_upper", {t}},
        {"ts_lower", {t}},
        {"ts_upper", {text("é")}},
        {"ts_ascii", {t}},
        {"ts_char", {n}},
        {"ts_unicode", {t}},
        {"ts_nchar", {n}},
        {"ts_quotename", {t}},
        {"ts_quotename", {t, text("(")}},
        {"ts_concat", {t, t, t}},
        {"ts_isnumeric", {t}},
        {"ts_isdate", {t}},
        {"ts_soundex", {t}},
        {"ts_difference", {t, t}},
        {"ts_like", {t, t}},
        {"ts_like", {t, t, text("!")}},
        {"ts_idiv", {n, n}},
        {"ts_imod", {n, n}},
        {"ts_div", {x, x}},
        {"ts_decmod", {decimal("1.5"), decimal("2")}},
        {"ts_log", {x, x}},
        {"ts_atn2", {x, x}},
        {"ts_floor", {decimal("1.5")}},
        {"ts_round", {decimal("1.55"), n}},
        {"ts_round", {decimal("1.55"), n, n}},
        {"ts_round", {x, n}},
        {"ts_round", {x, n, n}},
        {"ts_round", {n, n}},
        {"ts_round", {n, n, n}},
        {"ts_power", {n, x, text("int")}},
        {"ts_power", {decimal("1.5"), x, text("decimal(9,2)")}},
        {"ts_dateadd", {text("day"), n, moment("2026-01-02 00:00:00")}},
        {"ts_dateadd", {text("month"), n, timeOfDay("03:04:05")}},
        {"ts_datediff", {text("day"), moment("2026-01-02 00:00:00"), moment("2026-01-02 00:00:00")}},
        {"ts_datepart", {text("week"), moment("2026-01-02 00:00:00")}},
        {"ts_datename", {text("month"), moment("2026-01-02 00:00:00")}},
        {"ts_eomonth", {moment("2026-01-02 00:00:00"), n}},
        {"ts_datefromparts", {n, n, n}}};
    for (const auto& [name, arguments] : calls)
        bothStores().expectSameWithNulls(name, arguments);
}

const std::vector<std::string> kPatterns = {
    "",      "%",     "a%",    "%c",      "%b%",    "A_C",    "a__",      "[a-c]%", "[^a]%", "[]]", "[^]]%",
    "[a-]",  "[-a]%", "[z-a]", "[^z-a]",  "[A-Z]%", "%[0-9]", "[中-文]%", "_文%",   "[",     "a[",  "%[",
    "[]",    "[^]",   "a.c",   "a*",      "(a|b)",  "a\\%",   "%\\",      "^a",     "a$",    "{1}", "abc ",
    "abc _", "%[%]%", "%[_]%", "%[[]%",   "a!%c",   "%!",     "!a%",      "[!]-a]", "%%",    "_",   "__",
    "%c %",  "[a^]%", "[\\]%", "[a\\-z]", "?",      "+",      "a--c"};

const std::vector<std::string> kMatched = {"",      " ",  "a",    "abc", "ABC", "abc  ", "abcd", "中文", "a文b", "]",
                                           "-",     "^a", "a%c",  "a_c", "a.c", "a*c",   "[a",   "\\",   "a\\b", "{1}",
                                           "(a|b)", "9",  "a\nc", "é",   "a$",  "a-c",   "!",    "z"};

TEST(PostgresLike, MatchesAsOnTheEmbeddedStore) {
    for (const std::string& pattern : kPatterns) {
        for (const std::string& t : kMatched) {
            bothStores().expectSame("ts_like", {text(t), text(pattern)});
            bothStores().expectSame("ts_patindex", {text(pattern), text(t)});
            for (const std::string escape : {"!", "\\", "%", "a", "["})
                bothStores().expectSame("ts_like", {text(t), text(pattern), text(escape)});
        }
    }
}

TEST(PostgresLike, RefusesAnEscapeThatIsNoCharacter) {
    for (const std::string escape : {"", "ab", "中", "中文"})
        bothStores().expectSame("ts_like", {text("a"), text("a"), text(escape)});
    bothStores().expectSame("ts_like", {nullOf("varchar(9)"), text("a%")});
    bothStores().expectSame("ts_like", {text("a"), nullOf("varchar(9)")});
    bothStores().expectSame("ts_like", {text("a"), text("a"), nullOf("varchar(9)")});
    bothStores().expectSame("ts_like", {nullOf("varchar(9)"), text("a"), text("!")});
}

}  // namespace
}  // namespace orvenmod::store::postgres
