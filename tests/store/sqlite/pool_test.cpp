#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "embeddeddatabase.h"
#include "store/sqlite/handlepool.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::sqlite::test {
namespace {

using Pool = EmbeddedDatabase;

TEST_F(Pool, GivesAnIdleHandleAgain) {
    auto first = takeHandle(connectionString());
    const Database* address = first.get();
    giveHandleBack(connectionString(), std::move(first));
    EXPECT_EQ(takeHandle(connectionString()).get(), address);
}

TEST_F(Pool, KeepsTheStatementsOfAHandle) {
    connect()->execute("update t set n=1 where id=5");
    const auto handle = takeHandle(connectionString());
    EXPECT_EQ(handle->cache().size(), 1U);
}

TEST_F(Pool, GivesNoHandleOfAnotherString) {
    connect()->close();
    const auto handle = takeHandle(connectionString(";Language=us_english"));
    EXPECT_EQ(handle->file().language, tsql::Language::english);
}

TEST_F(Pool, GivesANewHandleForAFilePutInTheOldOnesPlace) {
    connect()->execute("insert into t(id) values(1)");
    SqliteStore()
        .connect("Provider=SQLite;Mode=Create;Data Source=" + folder_.file("other.db"))
        ->execute("create table u(a int)");
    const auto idle = connect();
    idle->close();
    for (const char* more : {"-wal", "-shm"})
        std::remove((file() + more).c_str());
    std::filesystem::copy_file(folder_.file("other.db"), folder_.file("copy.db"));
    std::filesystem::rename(folder_.file("copy.db"), file());
    const auto connection = connect();
    EXPECT_EQ(failureOf([&] { connection->open("select * from t"); }).number(), 208);
}

TEST_F(Pool, GivesNoHandleOfAFileThatHasGone) {
    connect()->close();
    std::filesystem::remove(file());
    EXPECT_EQ(failureOf([&] { connect(); }).number(), tsql::kNoFile);
}

TEST_F(Pool, LeavesNoTransactionAndNoLockBehind) {
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("insert into t(id) values(1)");
    connection->close();
    const auto other = connect(";Busy Timeout=0");
    EXPECT_EQ(other->execute("insert into t(id) values(2)"), 1);
    EXPECT_EQ(value(*other, "select count(*) from t"), "1");
}

TEST_F(Pool, ForgetsTheProgressCallback) {
    int calls = 0;
    const auto connection = connect();
    connection->setProgress([&calls] { ++calls; });
    connection->close();
    const auto next = takeHandle(connectionString());
    EXPECT_FALSE(next->runtime().progress);
    EXPECT_EQ(calls, 0);
}

TEST_F(Pool, LetsGoOfItsFilesOnDemand) {
    connect()->execute("insert into t(id) values(1)");
    EXPECT_TRUE(std::filesystem::exists(file() + "-wal"));
    SqliteStore::dropIdleHandles();
    EXPECT_FALSE(std::filesystem::exists(file() + "-wal"));
}

TEST_F(Pool, ServesTwoUsesAtOnce) {
    const auto first = connect();
    const auto second = connect();
    first->execute("insert into t(id) values(1)");
    EXPECT_EQ(value(*second, "select count(*) from t"), "1");
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
