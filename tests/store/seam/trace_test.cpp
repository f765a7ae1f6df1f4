#include "store/trace.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "scriptedstore.h"
#include "support/temporary.h"

namespace orvenmod::store {
namespace {

using Records = std::vector<TraceRecord>;

struct Traced {
    test::ScriptedStore target;
    Records records;
    TracingStore store{target, [this](const TraceRecord& record) { records.push_back(record); }};
};

std::vector<std::string> operations(const Records& records) {
    std::vector<std::string> result;
    for (const TraceRecord& record : records)
        result.push_back(record.operation);
    return result;
}

TEST(Trace, NotesEveryOperationInOrder) {
    Traced traced;
    const auto connection = traced.store.connect("x");
    connection->beginTrans();
    connection->execute("delete t");
    connection->open("select a from t");
    const auto writer = connection->openTable("t");
    writer->addNew();
    writer->set("a", "1");
    writer->update();
    connection->commitTrans();
    connection->rollbackTrans();
    connection->close();
    EXPECT_EQ(operations(traced.records), (std::vector<std::string>{"connect", "begin", "execute", "open", "openTable",
                                                                    "addRow", "commit", "rollback", "close"}));
}

TEST(Trace, NotesTheStatementToTheBlankAndItsRows) {
    Traced traced;
    const auto connection = traced.store.connect("x");
    connection->execute("delete  t ");
    connection->open(" select a  from t");
    connection->openTable("tblItem")->update();
    EXPECT_EQ(traced.records[1].sql, "delete  t ");
    EXPECT_EQ(traced.records[1].rows, 3);
    EXPECT_EQ(traced.records[2].sql, " select a  from t");
    EXPECT_EQ(traced.records[2].rows, 2);
    EXPECT_EQ(traced.records[3].sql, "tblItem");
    EXPECT_EQ(traced.records[4].sql, "tblItem");
    EXPECT_GE(traced.records[1].milliseconds, 0);
}

TEST(Trace, NotesAFailureAndPassesItOn) {
    Traced traced;
    const auto connection = traced.store.connect("x");
    EXPECT_THROW(connection->execute("fail"), Failure);
    EXPECT_TRUE(traced.records.back().failed);
    EXPECT_EQ(traced.records.back().number, 102);
    EXPECT_EQ(traced.records.back().text, "坏语句");
}

TEST(Trace, NotesEachStatementOfAFlight) {
    Traced traced;
    const auto connection = traced.store.connect("x");
    const std::vector<std::string> statements = {"delete  a", "fail", "delete c"};
    EXPECT_THROW(connection->executeAll(statements), Failure);
    ASSERT_EQ(operations(traced.records), (std::vector<std::string>{"connect", "execute", "execute"}));
    EXPECT_EQ(traced.records[1].sql, "delete  a");
    EXPECT_EQ(traced.records[1].rows, 3);
    EXPECT_FALSE(traced.records[1].failed);
    EXPECT_EQ(traced.records[2].sql, "fail");
    EXPECT_EQ(traced.records[2].number, 102);
}

TEST(Trace, NotesAListAsOneOperationAndHowItIsRead) {
    Traced traced;
    const auto connection = traced.store.connect("x");
    const auto list = connection->openList("select  keys from t");
    EXPECT_EQ(list->cell(1, 0), "2");
    list->tend();
    EXPECT_EQ(connection->openList("select a from t")->cell(1, 0), "2");
    ASSERT_EQ(operations(traced.records), (std::vector<std::string>{"connect", "open", "open"}));
    EXPECT_EQ(traced.records[1].sql, "select  keys from t");
    EXPECT_EQ(traced.records[1].rows, 2);
    EXPECT_EQ(traced.records[1].read, "keys");
    EXPECT_EQ(traced.records[2].read, "whole");
    EXPECT_EQ(connection->openUnseen("select keys from u")->rowCount(), 2U);
    ASSERT_EQ(traced.records.size(), 4U);
    EXPECT_EQ(traced.records[3].operation, "open");
    EXPECT_EQ(traced.records[3].sql, "select keys from u");
    EXPECT_EQ(traced.records[3].rows, 2);
}

TEST(Trace, NotesOneCloseOfTwo) {
    Traced traced;
    const auto connection = traced.store.connect("x");
    connection->close();
    connection->close();
    EXPECT_EQ(operations(traced.records), (std::vector<std::string>{"connect", "close"}));
}

TEST(Trace, KeepsThePasswordOfTheConnectionStringToItself) {
    Traced traced;
    traced.store.connect("Password=secret");
    EXPECT_EQ(traced.records[0].sql.find("secret"), std::string::npos);
}

TEST(Trace, WritesAJsonLineAnOperation) {
    const orvenmod::test::TemporaryFolder folder;
    const std::string path = folder.file("trace.jsonl");
    test::ScriptedStore target;
    {
        TracingStore store(target, traceToFile(path));
        const auto connection = store.connect("x");
        connection->execute("insert into t values('引号\"')");
        EXPECT_THROW(connection->execute("fail"), Failure);
        connection->openList("select keys from t");
    }
    std::ifstream file(path);
    std::vector<nlohmann::json> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1]["operation"], "execute");
    EXPECT_EQ(lines[1]["sql"], "insert into t values('引号\"')");
    EXPECT_EQ(lines[1]["rows"], 3);
    EXPECT_TRUE(lines[1]["ms"].is_number());
    EXPECT_FALSE(lines[1].contains("failed"));
    EXPECT_FALSE(lines[1].contains("read"));
    EXPECT_EQ(lines[2]["failed"], true);
    EXPECT_EQ(lines[2]["number"], 102);
    EXPECT_EQ(lines[2]["text"], "坏语句");
    EXPECT_EQ(lines[3]["operation"], "open");
    EXPECT_EQ(lines[3]["read"], "keys");
}

TEST(Trace, AFileThatItMakesIsTheUsersAlone) {
    namespace fs = std::filesystem;
    const orvenmod::test::TemporaryFolder folder;
    test::ScriptedStore target;
    const mode_t usual = ::umask(0);
    TracingStore(target, traceToFile(folder.file("trace.jsonl"))).connect("x");
    std::ofstream(folder.file("given.jsonl")) << "{}\n";
    TracingStore(target, traceToFile(folder.file("given.jsonl"))).connect("x");
    ::umask(usual);
    EXPECT_EQ(fs::status(folder.file("trace.jsonl")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_GT(fs::file_size(folder.file("trace.jsonl")), 0U);
    EXPECT_EQ(fs::status(folder.file("given.jsonl")).permissions(), static_cast<fs::perms>(0666));
}

TEST(Trace, ToAFileThatCanNotBeWrittenDropsItsLines) {
    test::ScriptedStore target;
    TracingStore store(target, traceToFile("/no/such/folder/trace.jsonl"));
    EXPECT_EQ(store.connect("x")->execute("delete t"), 3);
}

}  // namespace
}  // namespace orvenmod::store
