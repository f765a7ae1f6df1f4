// A process that is killed in the middle of a large move leaves the database wholly before it or wholly after it.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>
#include <stdexcept>

#include "store/sqlite/sqlitestore.h"
#include "support/database.h"

extern char** environ;

namespace orvenmod::test {
namespace {

constexpr int kRows = 100000;
constexpr int kBegun = 6;  // operations until the transaction has begun
constexpr int kKills = 20;

/// The process that moves category 200; its statements can be counted as they run.
class Mover {
public:
    explicit Mover(const std::string& connectionString) {
        int ends[2];
        if (::pipe(ends) != 0) throw std::runtime_error("pipe");
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        ::posix_spawn_file_actions_addclose(&actions, ends[0]);
        std::string program = ORVEN_MOVE_CHILD;
        std::string argument = connectionString;
        char* arguments[] = {program.data(), argument.data(), nullptr};
        const int failed = ::posix_spawn(&process_, program.c_str(), &actions, nullptr, arguments, environ);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        output_ = ends[0];
        if (failed != 0) throw std::runtime_error("the mover can't be started");
    }
    ~Mover() {
        ::close(output_);
        if (process_ > 0) killNow();
    }
    Mover(const Mover&) = delete;
    Mover& operator=(const Mover&) = delete;

    /// Waits until so many operations have run, or it has ended; how many ran.
    int waitFor(int operations) {
        int seen = 0;
        char buffer[4096];
        while (seen < operations) {
            const auto wanted = std::min<std::size_t>(sizeof buffer, static_cast<std::size_t>(operations - seen));
            const auto got = ::read(output_, buffer, wanted);
            if (got <= 0) break;
            seen += static_cast<int>(got);
        }
        return seen;
    }
    void killNow() {
        ::kill(process_, SIGKILL);
        end();
    }
    int end() {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return status;
    }

private:
    pid_t process_ = -1;
    int output_ = -1;
};

class KilledMove : public testing::Test {
protected:
    /// A database with so many items below category 200, for all tests.
    static void SetUpTestSuite() {
        if (testStore() != TestStore::sqlite) return;
        database = std::make_unique<Database>();
        database->addGoods();
        database->addCategory(3, 200, "90", "大类");
        const auto connection = store::sqlite::SqliteStore().connect(database->connectionString());
        connection->beginTrans();
        connection->execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber) "
            "values(1001,'90.1','件',3,200,1,2,0,'.200.1001.')");
        for (int rows = 1; rows < kRows; rows *= 2) {
            const std::string id = "fitemid+" + std::to_string(rows);
            connection->execute(
                "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber) "
                "select " +
                id + ",'90.'+cast(" + id + "-1000 as varchar(20)),fName,3,200,1,2,0,'.200.'+cast(" + id +
                " as varchar(20))+'.' from tblItem where fparentid=200 and fitemid<=" +
                std::to_string(1000 + kRows - rows));
        }
        connection->execute(
            "insert into ICItem(fItemId,fNumber,fName) select fitemid,fnumber,fname from tblItem where fparentid=200");
        connection->commitTrans();
    }
    static void TearDownTestSuite() { database.reset(); }

    // Each move works on a copy of the file.
    void SetUp() override {
        NEEDS_A_FILE();
        ASSERT_TRUE(isBefore(database->connectionString()));
    }

    /// A copy to be moved.
    static std::string copy(const std::string& name) {
        // Nobody writes now, so file and log together are the database.
        for (const char* part : {"", "-wal"}) {
            if (!std::filesystem::exists(database->file() + part)) continue;
            std::filesystem::copy_file(database->file() + part, database->folder().file(name) + part);
        }
        return connectionStringFor(database->folder().file(name));
    }
    static void drop(const std::string& name) {
        store::sqlite::SqliteStore::dropIdleHandles();
        for (const char* part : {"", "-wal", "-shm"})
            std::filesystem::remove(database->folder().file(name) + part);
    }

    static int count(store::Connection& connection, const std::string& condition) {
        return std::stoi(connection.open("select count(*) as n from " + condition).text("n"));
    }
    static bool isBefore(const std::string& connectionString) {
        const auto connection = store::sqlite::SqliteStore().connect(connectionString);
        return count(*connection, "tblItem where fNBNumber like '.200.%' and fNumber like '90%' and fDepth<=2") ==
                   kRows + 1 &&
               count(*connection, "ICItem where fNumber like '90.%'") == kRows;
    }
    static bool isAfter(const std::string& connectionString) {
        const auto connection = store::sqlite::SqliteStore().connect(connectionString);
        return count(*connection, "tblItem where fNBNumber like '.14.200.%' and fNumber like '02.90%' and fDepth>=2") ==
                   kRows + 1 &&
               count(*connection, "ICItem where fNumber like '02.90.%'") == kRows;
    }

    static std::unique_ptr<Database> database;
};

std::unique_ptr<Database> KilledMove::database;

TEST_F(KilledMove, leavesTheDatabaseWhollyBeforeItOrWhollyAfterIt) {
    const unsigned seed = std::random_device()();
    std::cout << "seed " << seed << '\n';
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    int unfinished = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        const std::string moved = copy("moved.db");
        const int moment = std::uniform_int_distribution<int>(kBegun, kBegun + 2 * kRows)(random);
        {
            Mover mover(moved);
            ASSERT_EQ(mover.waitFor(moment), moment);
            mover.killNow();
        }
        const bool before = isBefore(moved);
        ASSERT_NE(before, isAfter(moved)) << "killed after " << moment << " operations";
        if (before) ++unfinished;
        drop("moved.db");
    }
    // The transaction had begun: where nothing is changed, the process died within it.
    EXPECT_GT(unfinished, kKills / 2);
}

TEST_F(KilledMove, aMoveThatIsLeftAloneEndsWhollyAfterIt) {
    const std::string moved = copy("whole.db");
    Mover mover(moved);
    mover.waitFor(3 * kRows);
    EXPECT_EQ(mover.end(), 0);
    EXPECT_TRUE(isAfter(moved));
}

}  // namespace
}  // namespace orvenmod::test
