// Fetching, from a driver that the test plays.
#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>

#include "store/odbc/odbcstore.h"
#include "store/odbc/sessionpool.h"
#include "support/scripteddriver/installeddrivers.h"
#include "support/scripteddriver/scriptedserver.h"

namespace orvenmod::store::odbc {
namespace {

using orvenmod::test::Answer;
using orvenmod::test::Session;

class OdbcFetch : public ::testing::Test {
protected:
    OdbcFetch() {
        dropIdleSessions();
        orvenmod::test::freshServer();
    }
    // The server that the test plays goes before the pool does.
    ~OdbcFetch() override { dropIdleSessions(); }
    static void SetUpTestSuite() { static const orvenmod::test::InstalledDrivers installed({"Scripted"}); }

    static Recordset fetch(const Answer& answer) {
        orvenmod::test::ScriptedServer::get().onStatement = [&](Session&, const std::string&) { return answer; };
        return OdbcStore().connect("Driver=Scripted")->open("select a from t");
    }
    static std::string shown(int type, const std::string& value) {
        Answer answer;
        answer.columns = {{.name = "a", .type = type, .size = 20}};
        answer.rows = {{value}};
        return std::string(fetch(answer).cell(0, 0).value_or("NULL"));
    }
};

TEST_F(OdbcFetch, ShowsNumbersByTheirColumnsOwnPrecision) {
    EXPECT_EQ(shown(SQL_REAL, "0.1"), "0.1");
    EXPECT_EQ(shown(SQL_REAL, "16777216"), "16777216");
    EXPECT_EQ(shown(SQL_DOUBLE, "0.1"), "0.1");
    EXPECT_EQ(shown(SQL_DOUBLE, "1e20"), "100000000000000000000");
    EXPECT_EQ(shown(SQL_DOUBLE, "-0.0"), "0");
    EXPECT_EQ(shown(SQL_BIGINT, "-9223372036854775808"), "-9223372036854775808");
    EXPECT_EQ(shown(SQL_INTEGER, "0"), "0");
    EXPECT_EQ(shown(SQL_DECIMAL, "922337203685477.5807"), "922337203685477.5807");
    EXPECT_EQ(shown(SQL_DECIMAL, "99999999999.999999"), "99999999999.999999");
    EXPECT_EQ(shown(SQL_DECIMAL, "-.5000"), "-0.5");
}

TEST_F(OdbcFetch, ShowsDatesInOneForm) {
    EXPECT_EQ(shown(SQL_TYPE_TIMESTAMP, "2026-01-02 03:04:05"), "2026-01-02 03:04:05");
    EXPECT_EQ(shown(SQL_TYPE_TIMESTAMP, "2026-01-02 03:04:05.007"), "2026-01-02 03:04:05.007");
}

TEST_F(OdbcFetch, ShowsTimesAsDatesShowTheirs) {
    constexpr int kServerTime = -154;
    for (const int type : {kServerTime, SQL_TYPE_TIME}) {
        EXPECT_EQ(shown(type, "03:04:05.0000000"), "03:04:05");
        EXPECT_EQ(shown(type, "03:04:05"), "03:04:05");
        EXPECT_EQ(shown(type, "23:59:59.1230000"), "23:59:59.123");
        EXPECT_EQ(shown(type, "23:59:59.5"), "23:59:59.500");
        EXPECT_EQ(shown(type, "23:59:59.0004"), "23:59:59");
    }
}

TEST_F(OdbcFetch, GivesEveryRowOfManyBlocks) {
    Answer answer;
    answer.columns = {{.name = "id", .type = SQL_INTEGER}, {.name = "name", .type = SQL_VARCHAR, .size = 30}};
    constexpr int kRows = 3001;
    for (int i = 0; i < kRows; ++i) {
        answer.rows.push_back(
            {std::to_string(i), i % 3 == 0 ? std::optional<std::string>() : "货" + std::to_string(i)});
    }
    const Recordset rows = fetch(answer);
    ASSERT_EQ(rows.rowCount(), static_cast<std::size_t>(kRows));
    for (std::size_t i = 0; i < rows.rowCount(); ++i) {
        ASSERT_EQ(rows.cell(i, 0), std::to_string(i));
        ASSERT_EQ(rows.cell(i, 1).has_value(), i % 3 != 0);
        if (i % 3 != 0) {
            ASSERT_EQ(rows.cell(i, 1), "货" + std::to_string(i));
        }
    }
}

TEST_F(OdbcFetch, GivesTheLongestTextThatAColumnHolds) {
    Answer answer;
    answer.columns = {{.name = "a", .type = SQL_WVARCHAR, .size = 4}, {.name = "b", .type = SQL_VARCHAR, .size = 4}};
    answer.rows = {{"客户资料", "客户"}};
    const Recordset rows = fetch(answer);
    EXPECT_EQ(rows.cell(0, 0), "客户资料");
    EXPECT_EQ(rows.cell(0, 1), "客户");
}

TEST_F(OdbcFetch, GivesTextsAndBytesWithoutASize) {
    Answer answer;
    answer.columns = {{.name = "id", .type = SQL_INTEGER},
                      {.name = "note", .type = SQL_LONGVARCHAR, .size = 0},
                      {.name = "photo", .type = SQL_LONGVARBINARY, .size = 2147483647}};
    const std::string note(100'000, 'n');
    const std::string photo(300'000, '\0');
    answer.rows = {{"1", note, photo}, {"2", std::nullopt, std::nullopt}, {"3", "", "x"}};
    const Recordset rows = fetch(answer);
    EXPECT_EQ(rows.cell(0, 1), note);
    EXPECT_EQ(rows.cell(0, 2), photo);
    EXPECT_FALSE(rows.cell(1, 1).has_value());
    EXPECT_EQ(rows.cell(2, 1), "");
    EXPECT_EQ(rows.cell(2, 2), "x");
}

TEST_F(OdbcFetch, RefusesAValueThatIsLongerThanItsColumnRatherThanCutIt) {
    Answer answer;
    answer.columns = {{.name = "a", .type = SQL_VARCHAR, .size = 2}};
    answer.rows = {{std::string(20, 'x')}};
    EXPECT_THROW(fetch(answer), Failure);
}

TEST_F(OdbcFetch, GivesTheRowsThatFollowACount) {
    Answer rows = orvenmod::test::oneRow({"x"});
    Answer count;
    count.touched = 3;
    count.later = {rows};
    EXPECT_EQ(fetch(count).cell(0, 0), "x");
}

TEST_F(OdbcFetch, FailsWithWhatFollowsTheRows) {
    Answer rows = orvenmod::test::oneRow({"x"});
    rows.later = {orvenmod::test::failed({{"22012", 8134, "[Scripted]Divide by zero"}})};
    EXPECT_THROW(fetch(rows), Failure);
}

}  // namespace
}  // namespace orvenmod::store::odbc
