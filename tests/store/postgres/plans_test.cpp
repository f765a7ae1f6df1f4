// Keys and indexes serve the statements of the windows on a server as well. Without rows it would read whole tables, so
// that it is told to avoid that: what it still reads whole, no index could have served.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "store/postgres/postgresstore.h"
#include "store/postgres/session.h"
#include "store/postgres/sessionpool.h"
#include "store/schema.h"
#include "store/schema/windowstatements.h"
#include "store/tsql/shape.h"
#include "support/postgresserver.h"

namespace orvenmod::store::postgres {
namespace {

using namespace orvenmod::test;
using nlohmann::json;

class ServerPlans : public ::testing::Test {
protected:
    ServerPlans() {
        createSchema(*PostgresStore().connect(database_.connectionString()));
        session_ = takeSession(database_.connectionString());
    }
    ~ServerPlans() override {
        session_.reset();
        PostgresStore::dropIdleSessions();
    }

    /// The rows that the parts of a statement gave, on those that there are.
    double rowsRead(const std::string& sql) {
        tsql::Shape shape;
        shape.scan(sql);
        const tsql::Translation& translation = session_->prepare(sql, shape).translation;
        std::string values;
        for (const tsql::Parameter& parameter : translation.parameters) {
            const auto& literal = shape.literals[static_cast<std::size_t>(parameter.literal)];
            values += (values.empty() ? "('" : ",'") + std::string(literal.text) + "'";
        }
        return given(json::parse(database_.run("PREPARE p AS " + translation.statements.at(0) +
                                               "; EXPLAIN (ANALYZE, FORMAT JSON) EXECUTE p" + values + ")"))
                         .at(0)
                         .at("Plan"));
    }

    static double given(const json& node) {
        double rows = node.at("Actual Rows").get<double>() * node.at("Actual Loops").get<double>() +
                      node.value("Rows Removed by Filter", 0.0);
        for (const json& part : node.value("Plans", json::array()))
            rows += given(part);
        return rows;
    }

    /// The plan that holds for all values of the parameters.
    json plan(const std::string& sql, const std::string& settings = "") {
        tsql::Shape shape;
        shape.scan(sql);
        const tsql::Translation& translation = session_->prepare(sql, shape).translation;
        std::string values;
        for (std::size_t i = 0; i < translation.parameters.size(); ++i)
            values += values.empty() ? "(null" : ",null";
        const std::string explained = database_.run(
            "SET plan_cache_mode = force_generic_plan; SET enable_seqscan = off; SET enable_bitmapscan = off; " +
            settings + "PREPARE p AS " + translation.statements.at(0) + "; EXPLAIN (FORMAT JSON) EXECUTE p" +
            (values.empty() ? "" : values + ")"));
        return json::parse(explained).at(0).at("Plan");
    }

    /// The tables that are read whole: without an index, or through the whole of one.
    static std::string scans(const json& node) {
        std::string found;
        const std::string type = node.at("Node Type");
        const bool index = type.starts_with("Index") && node.contains("Index Cond");
        if (node.contains("Relation Name") && type.find("Scan") != std::string::npos && !index) {
            found = node.at("Relation Name").get<std::string>() + "; ";
        }
        for (const json& part : node.value("Plans", json::array()))
            found += scans(part);
        return found;
    }

    ServerDatabase database_;
    std::unique_ptr<Session> session_;
};

TEST_F(ServerPlans, findRowsByIndex) {
    std::vector<const char*> statements(std::begin(kItemStatements), std::end(kItemStatements));
    statements.insert(statements.end(), std::begin(kUserStatements), std::end(kUserStatements));
    statements.insert(statements.end(), std::begin(kProbes), std::end(kProbes));
    for (const Served& statement : kSaveStatements)
        statements.push_back(statement.sql);
    for (const char* sql : statements)
        EXPECT_EQ(scans(plan(sql)), "") << sql << plan(sql).dump(1);
    EXPECT_EQ(scans(plan(kTreeStatement)), "");
}

TEST_F(ServerPlans, readFewRowsForASaveAmongManySiblings) {
    database_.run(
        "INSERT INTO tblitem(fitemid, fitemclassid, fparentid, fisdetail, fshortnumber, fnumber, fname) SELECT i, 3, "
        "13, 1, right(i::text, 3), '01.' || i, 'n' || i FROM generate_series(1000, 9000) i");
    database_.run("VACUUM ANALYZE tblitem");
    for (const Served& statement : kSaveStatements)
        EXPECT_LE(rowsRead(statement.sql), 10) << statement.sql;
}

// Everything that a list joins can come by key; whether it does, the server decides by the numbers of rows.
TEST_F(ServerPlans, scanTheListsOwnTableAndNothingElse) {
    const json list = plan(kListStatement, "SET enable_hashjoin = off; SET enable_mergejoin = off; ");
    EXPECT_EQ(scans(list), "icitem; ") << list.dump(1);
}

TEST_F(ServerPlans, findTheRowsOfAViewByTheJoinedTablesPath) {
    const std::string path = "select fitemid from vICItem where 1=1 and fNBNumber like '.12.%'";
    EXPECT_EQ(scans(plan(path)), "") << plan(path).dump(1);
}

TEST_F(ServerPlans, sumTheStockOfAWarehouseFromAnIndexAlone) {
    const std::string text = plan(kStockStatement).dump();
    EXPECT_NE(text.find("Index Only Scan"), std::string::npos) << text;
}

}  // namespace
}  // namespace orvenmod::store::postgres
