// The administrators' shell on a server, by the connection string alone.
#include <gtest/gtest.h>

#include "suiteserver.h"
#include "support/childprogram.h"

namespace orvenmod::store::postgres::test {
namespace {

TEST(ShellOnAServer, AnswersStatements) {
    const ReadyDatabase database;
    orvenmod::test::ChildProgram shell(ORVENSQL, {database.connectionString()});
    shell.tell("create table t(a int, b varchar(5))");
    EXPECT_EQ(shell.line(), R"({"affected":0})");
    shell.tell("insert into t(a,b) values(1,'x')");
    EXPECT_EQ(shell.line(), R"({"affected":1})");
    shell.tell("select a,b from t where b='X '");
    EXPECT_EQ(shell.line(), R"({"columns":["a","b"],"rows":[["1","x"]]})");
    shell.tell("insert into t(b) values('123456')");
    EXPECT_NE(shell.line()->find("2628"), std::string::npos);
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
