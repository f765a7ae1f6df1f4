// A primary with a synchronous standby. The primary goes, the standby is promoted, and whoever names both hosts works
// on: what was told as stored is there, once; what nobody can know is told as such.
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <iostream>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

#include "losses.h"
#include "store/tsql/messages.h"
#include "support/childprogram.h"

namespace orvenmod::test {
namespace {

namespace tsql = store::tsql;
using Clock = std::chrono::steady_clock;

class Failover : public ::testing::Test {
protected:
    Failover() : stage(primary), standby(primary, PostgresServer::Standby::synchronous) {
        appState().gConnStr = bothHosts();
    }

    std::string bothHosts() const {
        return "Provider=PostgreSQL;Data Source=" + primary.host() + "," + standby.host() +
               ";Initial Catalog=" + stage.name() + ";User ID=" + PostgresServer::kOwner;
    }
    std::string promoted(const std::string& sql) const { return standby.run(stage.name(), sql); }

    int promotedItems() const {
        const std::string rows = promoted(
            "SELECT count(*) FROM tblitem a, icitem b WHERE a.fitemid = b.fitemid "
            "AND a.fname = b.fname AND a.fname = '垫圈'");
        EXPECT_EQ(promoted("SELECT count(*) FROM tblitem WHERE fname = '垫圈'"), rows);
        return std::stoi(rows);
    }

    // Saves an item whose commit waits for the standby, since that is held up; meanwhile the primary goes. Then the
    // standby is promoted, and the button is pressed again.
    void saveAndLose(const std::function<void()>& holdUp, const std::function<void()>& promote,
                     const std::function<void(User&)>& saveAgain) {
        const int commit = static_cast<int>(stage.operationsOfASave().size());
        stage.openNew([&](User& user) {
            stage.fillIn(user);
            const auto told = stage.saveWith(user, commit - 1, [&] {
                holdUp();
                stage.whileAwaiting([this, gone = false]() mutable {
                    if (!std::exchange(gone, true)) primary.stop();
                });
            });
            stage.whileAwaiting({});
            ASSERT_EQ(told.size(), 1U);
            EXPECT_EQ(told[0].operation, "commit");
            EXPECT_EQ(told[0].number, tsql::kCommitUnknown);
            promote();
            saveAgain(user);
        });
        EXPECT_EQ(promotedItems(), 1);
    }

    PostgresServer primary{PostgresServer::Settings()};
    LossStage stage;
    PostgresServer standby;
};

TEST_F(Failover, ASaveThatTheStandbyHasNotIsToldAsUnknownAndCanBeDoneAgain) {
    saveAndLose([this] { standby.stop(); },
                [this] {
                    standby.start();
                    EXPECT_EQ(standby.run("postgres", "SELECT pg_promote()"), "t");
                    EXPECT_EQ(promotedItems(), 0);
                },
                [this](User& user) { stage.save(user); });
}

TEST_F(Failover, ASaveThatOnlyTheStandbyTellsOfIsToldAsUnknownAndIsNotStoredTwice) {
    primary.run("postgres", "ALTER SYSTEM SET synchronous_commit = 'remote_apply'");
    primary.run("postgres", "SELECT pg_reload_conf()");
    saveAndLose([this] { standby.run("postgres", "SELECT pg_wal_replay_pause()"); },
                [this] {
                    standby.promote();
                    EXPECT_EQ(promotedItems(), 1);
                },
                [](User& user) {
                    user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
                    user.clickTool("Save");
                });
}

TEST_F(Failover, ASaveWaitsForAStandbyThatIsAwayUntilThePrimaryAloneIsSaidToBeGoodEnough) {
    stage.openNew([&](User& user) {
        stage.fillIn(user);
        standby.stop();
        int waits = 0;
        stage.whileAwaiting([&] {
            if (++waits != 3) return;
            EXPECT_EQ(primary.run(stage.name(), "SELECT count(*) FROM tblitem WHERE fname = '垫圈'"), "0");
            primary.run("postgres", "ALTER SYSTEM RESET synchronous_standby_names");
            primary.run("postgres", "SELECT pg_reload_conf()");
        });
        stage.save(user);
        stage.whileAwaiting({});
        EXPECT_GE(waits, 3);
    });
    EXPECT_EQ(primary.run(stage.name(), "SELECT count(*) FROM tblitem WHERE fname = '垫圈'"), "1");
}

/// What four clerks tell, as it comes.
class Told {
public:
    void add(const std::string& line) {
        const std::lock_guard lock(mutex_);
        const auto name = line.substr(line.find('\t') + 1);
        if (line.starts_with("stored\t")) {
            stored_.insert(name);
            lastOutage_ = std::max(lastOutage_, Clock::now() - lastStored_);
            lastStored_ = Clock::now();
        } else if (line.starts_with("known\t")) {
            known_.insert(name);
        } else {
            refused_.push_back(line);
        }
        changed_.notify_all();
    }
    void awaitStored(std::size_t items) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return stored_.size() >= items; });
        lastStored_ = Clock::now();
        lastOutage_ = {};
    }
    const std::set<std::string>& stored() const { return stored_; }
    const std::set<std::string>& known() const { return known_; }
    const Texts& refused() const { return refused_; }
    /// The longest time without a stored item since awaitStored().
    double outage() const { return std::chrono::duration<double>(lastOutage_).count(); }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::set<std::string> stored_;
    std::set<std::string> known_;
    Texts refused_;
    Clock::time_point lastStored_;
    Clock::duration lastOutage_{};
};

TEST_F(Failover, FourClerksWorkOnLoseNothingThatWasToldAsStoredAndStoreNothingTwice) {
    constexpr std::size_t kClerks = 4;
    constexpr std::size_t kEach = 40;
    std::vector<std::unique_ptr<ChildProgram>> clerks;
    for (std::size_t clerk = 0; clerk < kClerks; ++clerk) {
        const Texts arguments = {bothHosts() + ";Busy Timeout=120000", "C" + std::to_string(clerk) + "-",
                                 std::to_string(1000 * (clerk + 1)), std::to_string(kEach), ""};
        clerks.push_back(std::make_unique<ChildProgram>(ORVEN_SAVE_CHILD, arguments));
    }
    Told told;
    std::vector<std::thread> readers;
    for (const auto& clerk : clerks)
        EXPECT_EQ(clerk->line(), "ready");
    for (const auto& clerk : clerks) {
        clerk->tell("go");
        readers.emplace_back([&told, &clerk] {
            while (const auto line = clerk->line())
                told.add(*line);
        });
    }
    told.awaitStored(kClerks * kEach / 4);
    primary.stop();
    standby.promote();
    for (std::thread& reader : readers)
        reader.join();
    for (const auto& clerk : clerks)
        EXPECT_EQ(clerk->end(), 0);

    int lost = 0;
    for (const std::string& name : told.stored())
        lost += promoted("SELECT count(*) FROM tblitem WHERE fname = '" + name + "'") == "1" ? 0 : 1;
    const std::string unknownText =
        tsql::worded(tsql::Language::chinese, tsql::kCommitUnknown, {primary.host() + "," + standby.host()}).text();
    const auto unknown = std::count_if(told.refused().begin(), told.refused().end(), [&](const std::string& line) {
        EXPECT_TRUE(line.ends_with("\tkept")) << line;
        return line.find(unknownText) != std::string::npos;
    });
    std::cout << "without service: " << told.outage() << " s, told as stored: " << told.stored().size()
              << ", told as unknown: " << unknown << ", of these stored: " << told.known().size() << ", lost: " << lost
              << ", refused: " << told.refused().size() << "\n";
    EXPECT_EQ(lost, 0);
    EXPECT_LE(static_cast<std::ptrdiff_t>(told.known().size()), unknown) << "only what may be stored is";
    EXPECT_EQ(told.stored().size() + told.known().size(), kClerks * kEach);
    const std::string all = std::to_string(kClerks * kEach);
    EXPECT_EQ(promoted("SELECT count(*) || ',' || count(DISTINCT fname) || ',' || count(DISTINCT fnumber) FROM tblitem "
                       "WHERE fname LIKE 'C%'"),
              all + "," + all + "," + all);
    EXPECT_EQ(promoted("SELECT count(*) FROM tblitem a, icitem b WHERE a.fitemid = b.fitemid AND a.fname = b.fname AND "
                       "a.fnumber = b.fnumber AND a.fname LIKE 'C%'"),
              all);
}

}  // namespace
}  // namespace orvenmod::test
