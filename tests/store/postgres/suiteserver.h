// A database on the shared server with a table, and the failures that work on it meets.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "readydatabase.h"

namespace orvenmod::store::postgres::test {

class OnTheServer : public ::testing::Test {
protected:
    OnTheServer() { connect()->execute("create table t(id int, n int, c varchar(10))"); }
    ~OnTheServer() override { PostgresStore::dropIdleSessions(); }

    std::string connectionString(const std::string& more = "") const { return database_.connectionString() + more; }
    std::unique_ptr<Connection> connect(const std::string& more = "") {
        return PostgresStore().connect(connectionString(more));
    }
    static std::string value(Connection& connection, const std::string& sql) {
        const Recordset rows = connection.open(sql);
        return rows.eof() ? "no row" : std::string(rows.cell(0, 0).value_or("NULL"));
    }
    /// What another program does to the database.
    void foreignly(const std::string& text) const { database_.run("SET ROLE suite; " + text); }
    void terminateSessions() const { orvenmod::test::PostgresServer::shared().terminateSessions(database_.name()); }

    ReadyDatabase database_;
};

/// The failure that `work` throws; one of number 0 where it throws none.
template <typename Work>
Failure failureOf(Work work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure;
    }
    return {FailureKind::other, 0, "no failure"};
}

}  // namespace orvenmod::store::postgres::test
