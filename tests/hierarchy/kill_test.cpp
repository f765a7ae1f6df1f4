// A process that is killed in the middle of a large move leaves the database wholly before it or wholly after it.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <stdexcept>

#include "store/sqlite/sqlitestore.h"
#include "support/database.h"

extern char** environ;

namespace orvenmod::test {
namespace {

constexpr int kRows = 10000;
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
    /// A database with so many items below category 200.
    void SetUp() override {
        database.addGoods();
        database.addCategory(3, 200, "90", "大类");
        const auto connection = store::sqlite::SqliteStore().connect(database.connectionString());
        connection->beginTrans();
        for (int row = 1; row <= kRows; ++row) {
            const std::string id = std::to_string(1000 + row);
            const std::string code = "'90." + std::to_string(row) + "'";
            connection->execute(
                "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber) "
                "values(" +
                id + "," + code + ",'件',3,200,1,2,0,'.200." + id + ".')");
            connection->execute("insert into ICItem(fItemId,fNumber,fName) values(" + id + "," + code + ",'件')");
        }
        connection->commitTrans();
    }

    /// A copy to be moved.
    std::string copy(const std::string& name) {
        // Nobody writes now, so file and log together are the database.
        for (const char* part : {"", "-wal"}) {
            if (!std::filesystem::exists(database.file() + part)) continue;
            std::filesystem::copy_file(database.file() + part, database.folder().file(name) + part);
        }
        return connectionStringFor(database.folder().file(name));
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

    Database database;
};

TEST_F(KilledMove, leavesTheDatabaseWhollyBeforeItOrWhollyAfterIt) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int kill = 0; kill < kKills; ++kill) {
        const std::string moved = copy("kill" + std::to_string(kill) + ".db");
        ASSERT_TRUE(isBefore(moved));
        const int moment = std::uniform_int_distribution<int>(6, 2 * kRows)(random);
        {
            Mover mover(moved);
            ASSERT_EQ(mover.waitFor(moment), moment);
            mover.killNow();
        }
        ASSERT_NE(isBefore(moved), isAfter(moved)) << "killed after " << moment << " operations";
    }
}

TEST_F(KilledMove, aMoveThatIsLeftAloneEndsWhollyAfterIt) {
    const std::string moved = copy("moved.db");
    Mover mover(moved);
    mover.waitFor(3 * kRows);
    EXPECT_EQ(mover.end(), 0);
    EXPECT_TRUE(isAfter(moved));
}

}  // namespace
}  // namespace orvenmod::test
