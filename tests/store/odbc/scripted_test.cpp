// The driver that tests play with answers and records what the store asks of it.
#include <gtest/gtest.h>

#include "store/odbc/odbcstore.h"
#include "support/scripteddriver/installeddrivers.h"
#include "support/scripteddriver/scriptedserver.h"

namespace orvenmod::store::odbc {
namespace {

using orvenmod::test::Answer;
using orvenmod::test::Session;

class ScriptedDriverTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { static const orvenmod::test::InstalledDrivers installed({"Scripted"}); }

    orvenmod::test::ScriptedServer& server_ = orvenmod::test::freshServer();
};

TEST_F(ScriptedDriverTest, AnswersAQueryWithTheRowsOfTheScript) {
    server_.onStatement = [](Session&, const std::string&) {
        Answer answer;
        answer.columns = {{.name = "name", .type = 12, .size = 20, .digits = 0},
                          {.name = "rate", .type = 8, .size = 53, .digits = 0}};
        answer.rows = {{"中文", "2.5"}, {std::nullopt, std::nullopt}};
        return answer;
    };
    const auto connection = OdbcStore().connect("Driver=Scripted;Server=host");
    const Recordset rows = connection->open("select name,rate from t");
    ASSERT_EQ(rows.rowCount(), 2U);
    EXPECT_EQ(rows.cell(0, 0), "中文");
    EXPECT_EQ(rows.cell(0, 1), "2.5");
    EXPECT_FALSE(rows.cell(1, 0).has_value());
    EXPECT_EQ(server_.sessions.back().statements.back(), "select name,rate from t");
}

TEST_F(ScriptedDriverTest, RefusesWithTheRecordsOfTheScript) {
    const auto connection = OdbcStore().connect("Driver=Scripted;Server=host");
    server_.onStatement = [](Session&, const std::string&) {
        return orvenmod::test::failed({{"23000", 2627, "[Scripted]doubled"}, {"01000", 3621, "[Scripted]terminated"}});
    };
    try {
        connection->execute("insert into t values(1)");
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 2627);
        EXPECT_EQ(failure.kind(), FailureKind::key);
    }
}

}  // namespace
}  // namespace orvenmod::store::odbc
