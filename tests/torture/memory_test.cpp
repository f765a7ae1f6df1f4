// The n-th allocation of a command fails, of the component or of the engine below it: no crash, no leak, the database
// as before or as after it, a box or a failure to the host that says so, and the next command works.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include "platform/partialfile.h"
#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"
#include "support/watchedmemory.h"
#include "torture/commands.h"
#include "torture/failingmemory.h"
#include "torture/share.h"
#include "torture/states.h"

namespace orvenmod::test {
namespace {

constexpr int kFew = 40;

// What a crash tells.
char place[200];

extern "C" void tellPlace(int signal) {
    if (::write(STDERR_FILENO, place, sizeof place) < 0) std::_Exit(1);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void notePlace(int at, std::int64_t of, MemoryTrouble::Kind kind) {
    const std::string command = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::snprintf(place, sizeof place, "\nORVEN_SEED=%u %s: allocation %d of %lld fails%s\n", seed(), command.c_str(),
                  at, static_cast<long long>(of), kind == MemoryTrouble::Kind::once ? "" : ", and all behind it");
}

class Memory : public testing::TestWithParam<Command> {
protected:
    static void SetUpTestSuite() {
        for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE})
            std::signal(signal, tellPlace);
    }
    void TearDown() override { endMemory(); }

    std::string database() const { return databaseIn(folder.path()); }
    void layOutAgain() {
        removeDatabase(database());
        layOut(GetParam(), folder.path());
    }

    /// The command, from a process that holds nothing yet to one that holds nothing any more.
    struct Run {
        std::int64_t allocations = 0;
        bool failed = false;
        bool told = false;
        bool heard = false;
        bool stumbled = false;
        std::string account;
    };
    Run run(const MemoryTrouble& trouble) {
        layOutAgain();
        Desk desk(connectionStringFor(database()) + ";Busy Timeout=50", folder.path());
        desk.aside = pauseMemory;
        beginMemory(trouble);
        desk.play(GetParam());
        Run done;
        done.allocations = endMemory();
        done.failed = memoryFailed();
        done.told = desk.told();
        done.heard = !desk.boxes().empty() || !desk.escaped().empty();
        done.stumbled = stumbled(desk);
        done.account = desk.account();
        EXPECT_EQ(desk.connectionsAlive(), 0);
        return done;
    }
    std::int64_t heldAfterwards() {
        store::sqlite::SqliteStore::dropIdleHandles();
        return heldBlocks();
    }

    void fail(const MemoryTrouble& trouble) {
        const Run done = run(trouble);
        store::sqlite::SqliteStore::dropIdleHandles();
        if (!done.failed) return;
        ++tried;
        const std::string state = stateOf(database());
        if (done.told && !done.stumbled) {
            EXPECT_TRUE(state == after) << difference(state, after) << done.account;
        } else if (!done.told) {
            EXPECT_TRUE(state == before || state == after) << difference(state, before) << done.account;
            EXPECT_TRUE(done.heard) << "nothing told that the command was not done";
        }
        Desk desk(connectionStringFor(database()), folder.path());
        if (state != before) return;
        desk.play(GetParam());
        store::sqlite::SqliteStore::dropIdleHandles();
        EXPECT_TRUE(desk.told()) << "first " << done.account << "\nthen " << desk.account();
    }

    TemporaryFolder folder;
    std::string before;
    std::string after;
    int tried = 0;
};

TEST_P(Memory, anAllocationThatFailsLeavesAllOfTheCommandOrNothing) {
    layOutAgain();
    before = stateOf(database());
    // Twice, since the first makes what the process keeps.
    run({});
    const Run whole = run({});
    ASSERT_TRUE(whole.told) << whole.account;
    store::sqlite::SqliteStore::dropIdleHandles();
    after = stateOf(database());
    std::mt19937 random = randomFor(GetParam().name.c_str());
    for (const int at : placesOf(static_cast<int>(whole.allocations), kFew, random)) {
        for (const auto kind : {MemoryTrouble::Kind::once, MemoryTrouble::Kind::lasting}) {
            notePlace(at, whole.allocations, kind);
            SCOPED_TRACE(place);
            fail({kind, at});
        }
    }
    std::snprintf(place, sizeof place, "outside the sweep\n");
    tellTried(tried);
}

TEST_P(Memory, anAllocationThatFailsLeaksNothing) {
    run({});
    const Run whole = run({});
    std::mt19937 random = randomFor("leaks");
    for (const int at : placesOf(static_cast<int>(whole.allocations), kFew / 4, random)) {
        ++tried;
        notePlace(at, whole.allocations, MemoryTrouble::Kind::once);
        SCOPED_TRACE(place);
        // The first time may make what the process keeps.
        run({MemoryTrouble::Kind::once, at});
        const std::int64_t held = heldAfterwards();
        run({MemoryTrouble::Kind::once, at});
        EXPECT_EQ(heldAfterwards(), held);
    }
    tellTried(tried);
}

TEST(MemoryOfFiles, aPartialFileGoesThoughMemoryIsOut) {
    const TemporaryFolder folder;
    std::string left;
    {
        const platform::PartialFile file(folder.file("list.xls"));
        left = file.partialPath();
        EXPECT_EQ(::access(left.c_str(), F_OK), 0);
        beginMemory({MemoryTrouble::Kind::lasting, 1});
    }
    endMemory();
    EXPECT_NE(::access(left.c_str(), F_OK), 0);
}

INSTANTIATE_TEST_SUITE_P(Torture, Memory, testing::ValuesIn(allCommands()),
                         [](const testing::TestParamInfo<Command>& each) { return each.param.name; });

}  // namespace
}  // namespace orvenmod::test

int main(int count, char** arguments) {
    orvenmod::test::prepareToFail();
    ::testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
