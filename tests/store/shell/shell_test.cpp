#include "tools/orvensql/shell.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <sstream>

#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"

namespace orvenmod::tools {
namespace {

using nlohmann::json;

class Shell : public ::testing::Test {
protected:
    ~Shell() override { store::sqlite::SqliteStore::dropIdleHandles(); }

    std::string connectionString() const { return "Provider=SQLite;Mode=Create;Data Source=" + folder_.file("s.db"); }
    std::string answers(const std::string& lines) {
        std::istringstream input(lines);
        std::ostringstream output;
        const auto connection = store::sqlite::SqliteStore().connect(connectionString());
        runShell(*connection, input, output);
        return output.str();
    }

    orvenmod::test::TemporaryFolder folder_;
};

TEST_F(Shell, AnswersAStatementALine) {
    EXPECT_EQ(
        answers("create table t(id int, c varchar(10), d datetime)\n"
                "insert into t(id,c,d) values(1,'甲','2026-01-02')\n"
                "insert into t(id) values(2)\n"
                "select id,c,d from t order by id\n"),
        "{\"affected\":0}\n"
        "{\"affected\":1}\n"
        "{\"affected\":1}\n"
        "{\"columns\":[\"id\",\"c\",\"d\"],\"rows\":[[\"1\",\"甲\",\"2026-01-02 00:00:00\"],[\"2\",null,null]]}\n");
}

TEST_F(Shell, AnswersAFailureWithNumberKindAndText) {
    const json answer = json::parse(answers("select cast('abc' as int)\n"));
    EXPECT_EQ(answer["error"]["number"], 245);
    EXPECT_EQ(answer["error"]["kind"], "conversion");
    EXPECT_EQ(answer["error"]["text"], "在将 varchar 值 'abc' 转换成数据类型 int 时失败。");
}

TEST_F(Shell, SkipsBlankLinesAndGoesOnAfterAFailure) {
    EXPECT_EQ(answers("\n   \nnonsense\r\nselect 1 as a\r\n").substr(0, 9), "{\"error\":");
    EXPECT_NE(answers("nonsense\nselect 1 as a\n").find("{\"columns\":[\"a\"],\"rows\":[[\"1\"]]}"), std::string::npos);
}

TEST_F(Shell, BeginsCommitsAndRollsBack) {
    EXPECT_EQ(
        answers("create table t(id int)\n!begin\ninsert into t values(1)\n!rollback\nselect count(*) as n from t\n"
                "!begin\ninsert into t values(1)\n!commit\nselect count(*) as n from t\n"),
        "{\"affected\":0}\n{\"ok\":true}\n{\"affected\":1}\n{\"ok\":true}\n"
        "{\"columns\":[\"n\"],\"rows\":[[\"0\"]]}\n"
        "{\"ok\":true}\n{\"affected\":1}\n{\"ok\":true}\n"
        "{\"columns\":[\"n\"],\"rows\":[[\"1\"]]}\n");
    EXPECT_EQ(json::parse(answers("!rollback\n"))["error"]["number"], 3903);
    EXPECT_EQ(json::parse(answers("!commit\n"))["error"]["kind"], "transaction");
}

TEST_F(Shell, EndsAtQuitAndUndoesWhatIsOpen) {
    EXPECT_EQ(answers("create table t(id int)\n!begin\ninsert into t values(1)\n!quit\nselect 1 as a\n"),
              "{\"affected\":0}\n{\"ok\":true}\n{\"affected\":1}\n");
    EXPECT_EQ(answers("select count(*) as n from t\n"), "{\"columns\":[\"n\"],\"rows\":[[\"0\"]]}\n");
}

TEST_F(Shell, KnowsAQueryInParentheses) {
    EXPECT_NE(answers("(select 1 as a) union all select 2\n").find("rows"), std::string::npos);
}

struct Ended {
    int code = -1;
    std::string output;
};

Ended run(const std::string& connectionString) {
    const std::string command = std::string(ORVENSQL) + " '" + connectionString + "' </dev/null 2>/dev/null";
    FILE* pipe = ::popen(command.c_str(), "r");
    Ended ended;
    char buffer[512];
    while (pipe != nullptr && std::fgets(buffer, sizeof buffer, pipe) != nullptr)
        ended.output += buffer;
    const int status = pipe == nullptr ? -1 : ::pclose(pipe);
    ended.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ended;
}

TEST_F(Shell, EndsWithOneErrorLineAndCodeOneWithoutADatabase) {
    const Ended ended = run("Provider=SQLite;Data Source=" + folder_.file("no.db"));
    EXPECT_EQ(ended.code, 1);
    const json answer = json::parse(ended.output);
    EXPECT_EQ(answer["error"]["kind"], "connection");
    EXPECT_NE(answer["error"]["text"].get<std::string>().find("Mode=Create"), std::string::npos);
}

TEST_F(Shell, EndsWellWithADatabase) { EXPECT_EQ(run(connectionString()).code, 0); }

}  // namespace
}  // namespace orvenmod::tools
