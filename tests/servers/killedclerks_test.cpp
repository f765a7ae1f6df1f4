// Eight clerks at eight machines that lose their power at the same moment, while they save.
#include <future>
#include <memory>

#include "losses.h"
#include "support/childprogram.h"

namespace orvenmod::test {
namespace {

class KilledClerks : public ::testing::Test {
protected:
    static constexpr int kClerks = 8;
    static constexpr int kNeverDone = 900;

    std::unique_ptr<ChildProgram> clerk(int number, int items) const {
        const Texts arguments = {stage.connectionString() + ";Busy Timeout=120000", "C" + std::to_string(number) + "-",
                                 std::to_string(1000 * number), std::to_string(items), ""};
        return std::make_unique<ChildProgram>(ORVEN_SAVE_CHILD, arguments);
    }
    void startAll() {
        others = sessions();
        for (int number = 1; number <= kClerks; ++number)
            clerks.push_back(clerk(number, kNeverDone));
        for (const auto& each : clerks)
            ASSERT_EQ(each->line(), "ready");
        for (const auto& each : clerks)
            each->tell("go");
    }
    void killAll() {
        for (const auto& each : clerks)
            each->kill();
        clerks.clear();
    }
    int number(const std::string& sql) const { return std::stoi(server.run(stage.name(), sql)); }
    int stored() const { return number("SELECT count(*) FROM tblitem WHERE fitemid > 202"); }
    void awaitStored(int items) const {
        while (stored() < items) {
        }
    }
    // A session whose clerk has gone finds that out when it wants to answer.
    void awaitSessionsGone() const {
        while (sessions() > others) {
        }
    }
    int sessions() const {
        return number(
            "SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND pid <> pg_backend_pid() AND "
            "backend_type = 'client backend'");
    }
    void expectNothingHalf() const {
        const int items = stored();
        EXPECT_EQ(number("SELECT count(*) FROM icitem WHERE fitemid > 202"), items);
        EXPECT_EQ(number("SELECT count(*) FROM tblitem a, icitem b WHERE a.fitemid = b.fitemid AND a.fname = b.fname "
                         "AND a.fnumber = b.fnumber AND a.fitemid > 202"),
                  items);
        EXPECT_EQ(server.run(stage.name(),
                             "SELECT fmaxnum >= (SELECT max(fitemid) FROM tblitem) FROM tblmaxnum WHERE "
                             "ftablename = 'tblItem'"),
                  "t");
    }
    void expectTheNextOneSaves() const {
        const int before = stored();
        const auto next = clerk(kClerks + 1, 3);
        ASSERT_EQ(next->line(), "ready");
        next->tell("go");
        EXPECT_EQ(next->end(), 0);
        EXPECT_EQ(stored(), before + 3);
    }

    PostgresServer& server = PostgresServer::shared();
    LossStage stage{server};
    std::vector<std::unique_ptr<ChildProgram>> clerks;
    int others = 0;  // sessions that are none of theirs
};

// Each has a row in the one table and waits for the other, which nobody can change.
TEST_F(KilledClerks, AllBetweenTheTwoRowsOfAnItemLeaveNoneOfThem) {
    startAll();
    awaitStored(kClerks);
    auto holder = std::async(std::launch::async, [this] {
        server.run(stage.name(),
                   "BEGIN; LOCK TABLE tblitem IN SHARE MODE; DO $$ BEGIN WHILE NOT EXISTS (SELECT FROM pg_namespace "
                   "WHERE nspname = 'released') LOOP PERFORM pg_stat_clear_snapshot(); END LOOP; END $$; COMMIT");
    });
    while (number("SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
                  "wait_event_type = 'Lock' AND xact_start IS NOT NULL") < kClerks) {
    }
    const int before = stored();
    killAll();
    server.run(stage.name(), "CREATE SCHEMA released");
    holder.get();
    awaitSessionsGone();
    EXPECT_EQ(stored(), before);
    expectNothingHalf();
    expectTheNextOneSaves();
}

TEST_F(KilledClerks, WhereverTheyAreLeaveNoHalfItem) {
    for (int round = 1; round <= 3; ++round) {
        startAll();
        awaitStored(stored() + round * kClerks);
        killAll();
        awaitSessionsGone();
        expectNothingHalf();
        server.run(stage.name(), "DELETE FROM tblitem WHERE fitemid > 202; DELETE FROM icitem WHERE fitemid > 202");
    }
    expectTheNextOneSaves();
}

}  // namespace
}  // namespace orvenmod::test
