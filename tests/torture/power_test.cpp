// What files can do to a command: each of its reads, writes, syncs, truncations and locks fails, the disk is full, the
// power goes. Opened again the database holds the whole command or none of it, and everything that was told as done.
#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"
#include "torture/commands.h"
#include "torture/faultyfiles.h"
#include "torture/share.h"
#include "torture/states.h"

namespace orvenmod::test {
namespace {

constexpr int kFewFailures = 3;
constexpr int kFewCuts = 5;
constexpr Survival kSurvivals[] = {Survival::nothing, Survival::tornEnd, Survival::someSectors};

class Files : public testing::TestWithParam<Command> {
protected:
    void SetUp() override {
        FaultyFiles::instance();
        random = randomFor(GetParam().name.c_str());
        before = freshState();
        const auto done = run({});
        ASSERT_TRUE(done.told) << done.account;
        after = stateOf(database());
        ASSERT_EQ(before != after, GetParam().changes);
        for (const FileAct act : kFileActs)
            counts[act] = layer().count(act);
        changes = layer().changes();
    }
    void TearDown() override { layer().end(); }

    static FaultyFiles& layer() { return FaultyFiles::instance(); }
    std::string database() const { return databaseIn(folder.path()); }

    std::string freshState() {
        removeDatabase(database());
        layOut(GetParam(), folder.path());
        return stateOf(database());
    }

    struct Run {
        bool told = false;
        bool heard = false;     ///< a box or a failure to the host
        bool stumbled = false;  ///< a box of a failure
        std::string account;
    };

    /// The command and the end of its process, in that trouble, on a fresh database.
    Run run(const FileTrouble& trouble) {
        freshState();
        layer().begin(trouble);
        Desk desk(connectionStringFor(database()) + ";Busy Timeout=50", folder.path());
        const Run done = play(desk);
        store::sqlite::SqliteStore::dropIdleHandles();
        layer().end();
        return done;
    }
    Run play(Desk& desk) {
        desk.play(GetParam());
        EXPECT_EQ(desk.connectionsAlive(), 0);
        return {desk.told(), !desk.boxes().empty() || !desk.escaped().empty(), stumbled(desk), desk.account()};
    }

    /// The database is as before the command or as after it, the latter where that was told.
    void expectWhole(const Run& done, const std::string& state) {
        EXPECT_TRUE(isSound(database()));
        if (done.told && done.stumbled) {
            // The clerk went on in a window that had told that it couldn't be filled.
            EXPECT_TRUE(state != before || !GetParam().changes) << done.account;
        } else if (done.told) {
            EXPECT_TRUE(state == after) << difference(state, after) << done.account;
        } else {
            EXPECT_TRUE(state == before || state == after) << difference(state, before) << done.account;
            EXPECT_TRUE(done.heard) << "nothing told that the command was not done";
        }
    }

    /// Where nothing came of it, the same command does its work now.
    void expectNextWorks(const Run& done) {
        if (stateOf(database()) != before) return;
        Desk desk(connectionStringFor(database()), folder.path());
        const Run next = play(desk);
        store::sqlite::SqliteStore::dropIdleHandles();
        EXPECT_TRUE(next.told) << "first " << done.account << "\nthen " << next.account;
    }

    void trouble(const FileTrouble& ahead) {
        const Run done = run(ahead);
        ++tried;
        expectWhole(done, stateOf(database()));
        expectNextWorks(done);
    }

    void powerGoes(int change) {
        const Run done = run({FileTrouble::Kind::power, FileAct::write, change});
        if (!layer().struck()) return;
        for (const Survival survival : kSurvivals) {
            SCOPED_TRACE(static_cast<int>(survival));
            powerComes(done, layer().image(survival, random));
        }
        const int sectors = layer().sectorsOfLastWrite();
        for (const int torn : placesOf(sectors, 1, random)) {
            SCOPED_TRACE("of the last write " + std::to_string(torn) + " of " + std::to_string(sectors) + " sectors");
            powerComes(done, layer().tornImage(torn));
        }
    }
    void powerComes(const Run& done, const FaultyFiles::Image& image) {
        removeDatabase(database());
        for (const auto& [path, contents] : image)
            std::ofstream(path, std::ios::binary) << contents;
        ++tried;
        Run lost = done;
        lost.heard = true;  // nobody is left to hear
        expectWhole(lost, stateOf(database()));
        expectNextWorks(done);
    }

    TemporaryFolder folder;
    std::mt19937 random;
    std::string before;
    std::string after;
    std::map<FileAct, int> counts;
    int changes = 0;
    int tried = 0;
};

TEST_P(Files, whateverFailsOnceOrFromThenOnLeavesAllOfTheCommandOrNothing) {
    for (const FileAct act : kFileActs) {
        for (const int at : placesOf(counts[act], kFewFailures, random)) {
            for (const auto kind : {FileTrouble::Kind::once, FileTrouble::Kind::lasting}) {
                SCOPED_TRACE(std::string(wordFor(act)) + " " + std::to_string(at) + " of " +
                             std::to_string(counts[act]) + (kind == FileTrouble::Kind::once ? "" : " and all behind"));
                trouble({kind, act, at});
            }
        }
    }
    tellTried(tried);
}

TEST_P(Files, aDiskThatRunsFullLeavesAllOfTheCommandOrNothing) {
    for (const int at : placesOf(counts[FileAct::write], kFewFailures, random)) {
        SCOPED_TRACE("full at write " + std::to_string(at));
        trouble({FileTrouble::Kind::full, FileAct::write, at});
    }
    tellTried(tried);
}

TEST_P(Files, aLossOfPowerLeavesAllOfTheCommandOrNothingAndAllThatWasTold) {
    for (const int at : placesOf(changes, kFewCuts, random)) {
        SCOPED_TRACE("power goes at change " + std::to_string(at) + " of " + std::to_string(changes));
        powerGoes(at);
    }
    tellTried(tried);
}

INSTANTIATE_TEST_SUITE_P(Torture, Files, testing::ValuesIn(allCommands()),
                         [](const testing::TestParamInfo<Command>& each) { return each.param.name; });

}  // namespace
}  // namespace orvenmod::test
