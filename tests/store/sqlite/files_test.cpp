#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "embeddeddatabase.h"
#include "store/sqlite/sqliteconnection.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::sqlite::test {
namespace {

using Files = EmbeddedDatabase;

TEST_F(Files, ThatAreMissingAreAFailureThatNamesThem) {
    const Failure failure =
        failureOf([&] { SqliteStore().connect("Provider=SQLite;Data Source=" + folder_.file("no.db")); });
    EXPECT_EQ(failure.number(), tsql::kNoFile);
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_NE(failure.text().find(folder_.file("no.db")), std::string::npos);
    EXPECT_NE(failure.text().find("Mode=Create"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder_.file("no.db")));
}

TEST_F(Files, AreMadeOnlyOnDemandButNoFolders) {
    SqliteStore()
        .connect("Provider=SQLite;Mode=Create;Data Source=" + folder_.file("new.db"))
        ->execute("create table a(b int)");
    EXPECT_TRUE(std::filesystem::exists(folder_.file("new.db")));
    const Failure failure = failureOf(
        [&] { SqliteStore().connect("Provider=SQLite;Mode=Create;Data Source=" + folder_.file("no/new.db")); });
    EXPECT_EQ(failure.kind(), FailureKind::connection);
}

TEST_F(Files, ThatAreFoldersAreAFailure) {
    EXPECT_EQ(failureOf([&] { SqliteStore().connect("Provider=SQLite;Data Source=" + folder_.path()); }).number(),
              tsql::kIsFolder);
}

TEST_F(Files, ThatAreNoDatabaseAreAFailure) {
    std::ofstream(folder_.file("letter.txt")) << std::string(4096, 'x');
    const Failure failure =
        failureOf([&] { SqliteStore().connect("Provider=SQLite;Data Source=" + folder_.file("letter.txt")); });
    EXPECT_EQ(failure.number(), tsql::kNoDatabase);
    std::ifstream letter(folder_.file("letter.txt"));
    EXPECT_EQ(letter.get(), 'x');
}

TEST_F(Files, WithASchemaThatCantBeReadAreAFailureAndNoLackOfMemory) {
    SqliteStore::dropIdleHandles();
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file().c_str(), &handle), SQLITE_OK);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_WRITABLE_SCHEMA, 1, nullptr);
    sqlite3_exec(handle, "update sqlite_master set sql='create table t(garbage' where name='t'", nullptr, nullptr,
                 nullptr);
    sqlite3_close(handle);
    const auto connection = connect();
    for (const char* sql : {"select * from t", "insert into t(id) values(1)", "create table u(id int)"})
        EXPECT_EQ(failureOf([&] { connection->execute(sql); }).number(), tsql::kNoDatabase) << sql;
}

TEST_F(Files, ThatNobodyMayReadAreAFailure) {
    SqliteStore::dropIdleHandles();
    ::chmod(file().c_str(), 0);
    EXPECT_EQ(failureOf([&] { connect(); }).number(), tsql::kUnreadable);
}

TEST_F(Files, ThatNobodyMayWriteOpenForReading) {
    connect()->execute("insert into t(id) values(1)");
    SqliteStore::dropIdleHandles();
    ::chmod(file().c_str(), 0444);
    const auto connection = connect();
    EXPECT_EQ(value(*connection, "select count(*) from t"), "1");
    const Failure failure = failureOf([&] { connection->execute("delete from t"); });
    EXPECT_EQ(failure.number(), tsql::kReadOnly);
    EXPECT_NE(failure.text().find(file()), std::string::npos);
    EXPECT_EQ(value(*connection, "select count(*) from t"), "1");
}

TEST_F(Files, OpenedForReadingRefuseToBeWritten) {
    const auto connection = connect(";Mode=ReadOnly");
    EXPECT_EQ(failureOf([&] { connection->execute("delete from t"); }).number(), tsql::kReadOnly);
    EXPECT_EQ(failureOf([&] { connection->execute("create table u(a int)"); }).number(), tsql::kReadOnly);
    EXPECT_EQ(value(*connection, "select count(*) from t"), "0");
}

TEST_F(Files, InEnglishOnDemand) {
    const Failure failure = failureOf(
        [&] { SqliteStore().connect("Provider=SQLite;Language=us_english;Data Source=" + folder_.file("no.db")); });
    EXPECT_NE(failure.text().find("There is no database file"), std::string::npos);
    const auto connection = connect(";Language=us_english");
    EXPECT_EQ(failureOf([&] { connection->open("select * from no"); }).text(), "Invalid object name 'no'.");
    connection->close();
    EXPECT_EQ(failureOf([&] { connection->open("select * from no"); }).text(), "The connection is closed.");
}

TEST_F(Files, WithAStringThatIsWrongAreAFailure) {
    for (const char* string : {"Provider=SQLite", "Provider=SQLite;Data Source=x;Mode=Sometimes",
                               "Provider=SQLite;Data Source=x;Busy Timeout=soon"}) {
        EXPECT_EQ(failureOf([&] { SqliteStore().connect(string); }).number(), tsql::kBadConnectionString) << string;
    }
}

TEST_F(Files, WithSignsOfAnAddressInTheirNamesOpen) {
    const std::string odd = folder_.file("a?b#c%20d 客户.db");
    SqliteStore().connect("Provider=SQLite;Mode=Create;Data Source={" + odd + "}")->execute("create table a(b int)");
    EXPECT_TRUE(std::filesystem::exists(odd));
}

// A database that may not grow stands for a disk that is full: SQLite reports both alike.
std::unique_ptr<SqliteConnection> connectionWithoutRoom(const std::string& connectionString) {
    auto database = std::make_unique<Database>(DatabaseFile::parse(connectionString));
    sqlite3_exec(database->handle(), "PRAGMA max_page_count = 20", nullptr, nullptr, nullptr);
    return std::make_unique<SqliteConnection>(connectionString, std::move(database));
}

void fill(Connection& connection) {
    for (int i = 0; i < 1000; ++i)
        connection.execute("insert into large(a) values('" + std::string(4000, 'x') + "')");
}

TEST_F(Files, WithoutRoomAreAFailureThatLosesNothing) {
    connect()->execute("create table large(a varchar(8000))");
    connect()->execute("insert into t(id) values(1)");
    const auto connection = connectionWithoutRoom(connectionString());
    const Failure failure = failureOf([&] { fill(*connection); });
    EXPECT_EQ(failure.number(), tsql::kDiskFull);
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_NE(failure.text().find(file()), std::string::npos);
    EXPECT_EQ(connection->execute("delete from large where a='no'"), 0);
    EXPECT_EQ(value(*connect(), "select count(*) from t"), "1");
}

// Contents that outgrow the room half-way.
void addLargeRow(Connection& connection) {
    const std::vector<std::byte> contents(1 << 20);
    const auto rows = connection.openTable("pictures");
    rows->addNew();
    rows->set("id", "7");
    rows->setBinary("a", contents);
    rows->update();
}

TEST_F(Files, WithoutRoomForARowsContentsAreAsBefore) {
    connect()->execute("create table pictures(id int,a image)");
    const auto connection = connectionWithoutRoom(connectionString());
    EXPECT_EQ(failureOf([&] { addLargeRow(*connection); }).number(), tsql::kDiskFull);
    EXPECT_EQ(value(*connection, "select count(*) from pictures"), "0");

    connection->beginTrans();
    connection->execute("insert into t(id) values(1)");
    EXPECT_EQ(failureOf([&] { addLargeRow(*connection); }).number(), tsql::kDiskFull);
    EXPECT_TRUE(connection->inTransaction());
    connection->rollbackTrans();
    EXPECT_EQ(value(*connection, "select count(*) from t"), "0");
    EXPECT_EQ(value(*connection, "select count(*) from pictures"), "0");
}

TEST_F(Files, WithoutRoomLeaveATransactionThatCanBeRolledBack) {
    connect()->execute("create table large(a varchar(8000))");
    const auto connection = connectionWithoutRoom(connectionString());
    connection->beginTrans();
    connection->execute("insert into t(id) values(1)");
    EXPECT_EQ(failureOf([&] { fill(*connection); }).number(), tsql::kDiskFull);
    EXPECT_TRUE(connection->inTransaction());
    connection->rollbackTrans();
    EXPECT_FALSE(connection->inTransaction());
    EXPECT_EQ(value(*connection, "select count(*) from t"), "0");
    EXPECT_EQ(value(*connection, "select count(*) from large"), "0");
    EXPECT_EQ(connection->execute("insert into t(id) values(2)"), 1);
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
