// A database of the embedded store in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>

#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"

namespace orvenmod::store::sqlite::test {

class EmbeddedDatabase : public ::testing::Test {
protected:
    EmbeddedDatabase() { connect(";Mode=Create")->execute("create table t(id int, n int, c varchar(10))"); }
    ~EmbeddedDatabase() override { SqliteStore::dropIdleHandles(); }

    std::string file() const { return folder_.file("test.db"); }
    std::string connectionString(const std::string& more = "") const {
        return "Provider=SQLite;Data Source=" + file() + more;
    }
    std::unique_ptr<Connection> connect(const std::string& more = "") {
        return SqliteStore().connect(connectionString(more));
    }
    static std::string value(Connection& connection, const std::string& sql) {
        const Recordset rows = connection.open(sql);
        return rows.eof() ? "no row" : std::string(rows.cell(0, 0).value_or("NULL"));
    }

    /// In SQLite's own words, as another program would write it.
    void native(const std::string& sql) const {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(file().c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }
    /// Whether the whole log could be taken over into the file, so that no reader needs any of it.
    bool logIsFree() const {
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(file().c_str(), &handle), SQLITE_OK);
        // Only one that has read knows of the log.
        EXPECT_EQ(sqlite3_exec(handle, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr), SQLITE_OK);
        const int code = sqlite3_wal_checkpoint_v2(handle, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
        sqlite3_close(handle);
        return code == SQLITE_OK;
    }

    orvenmod::test::TemporaryFolder folder_;
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

}  // namespace orvenmod::store::sqlite::test
