// Everything that a scenario needs: a database, a scripted user, settings, and a record of what reached the store.
//
//     Stage stage;
//     stage.database().addGoods();
//     stage.script().onWindow("frmBasicInfoList", [](User& user) { ... });
//     clsBasicInfo info;
//     info.mainInterface(3, "", "", stage.connectionString(), 0);
//     stage.finish();
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frame/services.h"
#include "platform/desktop/plaininifiles.h"
#include "platform/desktop/processfolders.h"
#include "store/fault.h"
#include "store/trace.h"
#include "support/database.h"
#include "support/user.h"

namespace orvenmod::test {

struct RowWindows;

/// Settings in memory.
class MapSettings : public platform::Settings {
public:
    std::string get(const std::string& application, const std::string& section, const std::string& key,
                    const std::string& fallback) override;
    void save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override;
    void remove(const std::string& application, const std::string& section, const std::string& key) override;

    /// Makes every save fail.
    bool refuseSaves = false;

private:
    std::map<std::string, std::string> values_;
};

class FixedClock : public platform::Clock {
public:
    platform::Date today() override { return date; }
    platform::Date date{2026, 11, 20};
};

/// Counts the connections that are alive, and notes what they are to call while a statement takes long.
class CountingStore : public store::Store {
public:
    explicit CountingStore(store::Store& target) : target_(target) {}
    std::unique_ptr<store::Connection> connect(const std::string& connectionString) override;
    int alive() const { return state_->alive; }
    const std::function<void()>& progress() const { return state_->progress; }
    void setWhileAwaiting(std::function<void()> act) { state_->whileAwaiting = std::move(act); }
    /// From now on lists are read by such windows.
    RowWindows& readByWindows();

    struct State {
        int alive = 0;
        std::function<void()> progress;
        std::function<void()> whileAwaiting;
        std::shared_ptr<RowWindows> windows;
    };

private:
    store::Store& target_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

using MakeScript = std::unique_ptr<Script> (*)();

/// Takes the place of the component's services while it lives, and starts with a fresh AppState.
class Stage {
public:
    explicit Stage(MakeScript makeScript = newMemoryScript);
    Stage(MakeScript makeScript, std::unique_ptr<Site> site);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    Script& script() { return *script_; }
    Database& database() { return *database_; }
    std::string connectionString() const { return database_->connectionString(); }
    MapSettings& settings() { return settings_; }
    /// A setting shared with the suite.
    void set(const std::string& section, const std::string& key, const std::string& value);
    std::string get(const std::string& section, const std::string& key);
    FixedClock& clock() { return clock_; }
    store::FaultPlan& faults() { return faults_; }
    int connectionsAlive() const { return counting_.alive(); }
    /// What the last connection was told to call while a statement takes long.
    const std::function<void()>& progress() const { return counting_.progress(); }

    /// The statements that reached the store, in order, failed ones included.
    std::vector<std::string> statements() const;
    std::string lastStatement() const;
    /// All operations by name: "connect", "open" ...
    std::vector<std::string> operations() const;
    void forgetStatements() { trace_.clear(); }
    /// Called after each operation, before the logic goes on: the moment for somebody else to act.
    void afterOperation(store::TraceSink watcher) { watcher_ = std::move(watcher); }
    /// Called about ten times a second while a statement takes long: likewise.
    void whileAwaiting(std::function<void()> act) { counting_.setWhileAwaiting(std::move(act)); }

    /// Lists are read by small windows from now on, whatever the store would do.
    RowWindows& readByWindows() { return counting_.readByWindows(); }

    /// The contents of a file, "" where there is none.
    static std::string contents(const std::string& file);
    std::string iniFile() const { return database_->folder().file("setupInfo.ini"); }

    /// Fails the test for scripts, answers or connections left over.
    void finish();

private:
    Stage(MakeScript makeScript, std::unique_ptr<Database> database);

    std::unique_ptr<Database> database_;
    std::unique_ptr<Script> script_;
    MapSettings settings_;
    FixedClock clock_;
    platform::desktop::PlainIniFiles iniFiles_;
    platform::desktop::ProcessFolders folders_;
    std::vector<store::TraceRecord> trace_;
    store::TraceSink watcher_;
    store::FaultPlan faults_;
    CountingStore counting_;
    store::FaultyStore faulty_;
    store::TracingStore tracing_;
    Services services_;
};

}  // namespace orvenmod::test
