// The cases of the dialect on the store of this binary. Runs those of a file: {"id", "group", "setup": [...], "sql",
// and either "error": kind, or "columns" and "rows" of the statement or of the query "then"; "error_then" is the kind
// with which that query fails}.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "store/contract/contract.h"
#include "support/sourcefolder.h"

namespace orvenmod::store::test {
namespace {

using nlohmann::json;

std::vector<json> casesOf(const std::string& name) {
    std::ifstream file(orvenmod::test::sourceFile("tests/store/") + name);
    std::vector<json> cases;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty()) cases.push_back(json::parse(line));
    }
    return cases;
}

json rowsOf(const Recordset& rows) {
    json lines = json::array();
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        json line = json::array();
        for (int i = 0; i < rows.columnCount(); ++i) {
            const Value value = rows.cell(row, i);
            line.push_back(value ? json(*value) : json());
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

bool isQuery(const std::string& sql) {
    const auto start = sql.find_first_not_of(" (");
    return start != std::string::npos && (sql[start] == 's' || sql[start] == 'S');
}

class Case : public ::testing::TestWithParam<json> {
protected:
    // Runs a statement; its rows where it has some. The kind of a failure as an object {"error": kind}.
    json run(Connection& connection, const std::string& sql) {
        try {
            if (!isQuery(sql)) {
                connection.execute(sql);
                return json::object();
            }
            const Recordset rows = connection.open(sql);
            json columns = json::array();
            for (const Column& column : rows.columns())
                columns.push_back(column.name);
            return {{"columns", columns}, {"rows", rowsOf(rows)}};
        } catch (const Failure& failure) {
            message_ = failure.text();
            number_ = failure.number();
            return {{"error", kindWord(failure.kind())}};
        }
    }

    bool isRefused(const json& got, const json& kind) const {
        return got.contains("error") && (got["error"] == kind || store_->isOwnNumber(number_));
    }

    StoreUnderTest* store_ = nullptr;
    std::string message_;
    int number_ = 0;
};

TEST_P(Case, AnswersAsTheServer) {
    const json& wanted = GetParam();
    std::string reason;
    store_ = storeUnderTest(reason);
    if (store_ == nullptr) GTEST_SKIP() << reason;
    const char* otherwise = store_->answersOtherwise(wanted.value("id", 0));
    if (otherwise != nullptr) GTEST_SKIP() << "this server answers in its own way: " << otherwise;
    const auto connection = store_->freshDatabase();
    for (const json& sql : wanted.value("setup", json::array())) {
        ASSERT_FALSE(run(*connection, sql.get<std::string>()).contains("error")) << sql << ": " << message_;
    }
    const std::string sql = wanted["sql"];
    json got = run(*connection, sql);
    if (wanted.contains("error")) {
        EXPECT_TRUE(isRefused(got, wanted["error"])) << got << " " << sql << ": " << message_;
        return;
    }
    ASSERT_FALSE(got.contains("error")) << sql << ": " << message_;
    if (wanted.contains("then")) got = run(*connection, wanted["then"].get<std::string>());
    if (wanted.contains("error_then")) {
        EXPECT_TRUE(isRefused(got, wanted["error_then"])) << got << " " << sql;
    } else {
        EXPECT_EQ(got, json({{"columns", wanted["columns"]}, {"rows", wanted["rows"]}})) << sql << ": " << message_;
    }
}

std::string nameOf(const ::testing::TestParamInfo<json>& info) {
    std::string name = info.param.value("group", "case");
    for (char& c : name) {
        if (c == '-' || c == ' ') c = '_';
    }
    return name + "_" + std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(OfTheServer, Case, ::testing::ValuesIn(casesOf("tsql_cases.jsonl")), nameOf);
INSTANTIATE_TEST_SUITE_P(Further, Case, ::testing::ValuesIn(casesOf("tsql_more_cases.jsonl")), nameOf);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Case);

TEST(Cases, AreAllThere) { EXPECT_EQ(casesOf("tsql_cases.jsonl").size(), 127U); }

}  // namespace
}  // namespace orvenmod::store::test
