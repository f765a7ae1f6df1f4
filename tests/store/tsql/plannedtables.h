// Tables of a database in memory, made in the dialect, and how SQLite plans what reads them.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <vector>

#include "store/sqlite/databasefile.h"
#include "store/sqlite/functions.h"
#include "store/sqlite/sqlitecatalog.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {

class PlannedTables : public ::testing::Test {
protected:
    PlannedTables() {
        EXPECT_EQ(sqlite3_open(":memory:", &database_), SQLITE_OK);
        sqlite::registerFunctions(database_, runtime_);
        catalog_.attach(database_, file_);
    }
    ~PlannedTables() override {
        catalog_.detach();
        sqlite3_close(database_);
    }

    std::vector<std::string> translate(const std::string& sql) {
        catalog_.refresh();
        return translateForSqlite(sql, catalog_).statements;
    }
    void run(const std::string& sql) {
        for (const std::string& statement : translate(sql))
            native(statement);
    }
    /// A statement of SQLite's own.
    void native(const std::string& statement) {
        EXPECT_EQ(sqlite3_exec(database_, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << statement << ": " << sqlite3_errmsg(database_);
    }
    /// The plan of a statement of SQLite's own, a line a step.
    std::string nativePlan(const std::string& statement) {
        std::string plan;
        sqlite3_stmt* query = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database_, ("EXPLAIN QUERY PLAN " + statement).c_str(), -1, &query, nullptr),
                  SQLITE_OK)
            << statement << ": " << sqlite3_errmsg(database_);
        while (sqlite3_step(query) == SQLITE_ROW)
            plan += std::string(reinterpret_cast<const char*>(sqlite3_column_text(query, 3))) + "\n";
        sqlite3_finalize(query);
        return plan;
    }

    sqlite3* database_ = nullptr;
    sqlite::Runtime runtime_;
    sqlite::DatabaseFile file_{.path = ":memory:"};
    sqlite::SqliteCatalog catalog_;
};

}  // namespace orvenmod::store::tsql
