// The n-th allocation of a command fails, of the component or of the engine below it: no crash, no leak, the database
// as before or as after it, a box or a failure to the host that says so, and the next command works.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

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

    struct Found {
        bool sound = false;
        std::string state;
    };
    /// What files hold that are the same to the byte is known already.
    const Found& found() {
        const auto [at, isNew] = known.try_emplace(contentsOf(database()) + contentsOf(database() + "-wal"));
        if (isNew) at->second = {isSound(database()), stateOf(database())};
        return at->second;
    }

    void fail(const MemoryTrouble& trouble) {
        const Run done = run(trouble);
        store::sqlite::SqliteStore::dropIdleHandles();
        if (!done.failed) return;
        ++tried;
        const auto& [sound, state] = found();
        EXPECT_TRUE(sound) << done.account;
        if (done.told && done.stumbled) {
            // The clerk went on in a window that had told that it couldn't be filled.
            EXPECT_TRUE(state != before || !GetParam().changes) << done.account;
        } else if (done.told) {
            EXPECT_TRUE(state == after) << difference(state, after) << done.account;
        } else {
            EXPECT_TRUE(state == before || state == after) << difference(state, before) << done.account;
            EXPECT_TRUE(done.heard) << "nothing told that the command was not done";
        }
        Desk desk(connectionStringFor(database()), folder.path());
        if (state != before) return;
        desk.play(GetParam());
        store::sqlite::SqliteStore::dropIdleHandles();
        EXPECT_TRUE(desk.told()) << "first " << done.account << "\nthen " << desk.account();
    }

    /// Where to fail: of the places where they are noted, otherwise of all allocations.
    std::vector<int> chosen(int few, const char* choice, MemoryTrouble::Kind counting) {
        // Twice, since the first makes what the process keeps.
        run({});
        whole = run({counting});
        std::mt19937 random = randomFor(choice);
        if (fullLength() || counting == MemoryTrouble::Kind::none)
            return placesOf(static_cast<int>(whole.allocations), few, random);
        const std::vector<int> places = memoryPlaces();
        std::printf("%lld allocations, %zu to tell apart\n", static_cast<long long>(whole.allocations), places.size());
        return someOf(places, everyPlace() ? static_cast<int>(places.size()) : few, random);
    }

    TemporaryFolder folder;
    Run whole;
    std::map<std::string, Found> known;
    std::string before;
    std::string after;
    int tried = 0;
};

TEST_P(Memory, anAllocationThatFailsLeavesAllOfTheCommandOrNothing) {
    layOutAgain();
    before = stateOf(database());
    const std::vector<int> places = chosen(kFew, GetParam().name.c_str(), MemoryTrouble::Kind::noted);
    ASSERT_TRUE(whole.told) << whole.account;
    store::sqlite::SqliteStore::dropIdleHandles();
    after = stateOf(database());
    for (const int at : places) {
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
    // To note the places takes longer than a few tries.
    const auto counting = everyPlace() ? MemoryTrouble::Kind::noted : MemoryTrouble::Kind::none;
    for (const int at : chosen(kFew / 4, "leaks", counting)) {
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
