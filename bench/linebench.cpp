// Round trips. A command's statements that wait for no answer go out together; beside it stands the same command with
// each statement alone.
#include "linebench.h"

#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <set>
#include <stdexcept>
#include <vector>

#include "designersteps.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "hierarchy/itemroutines.h"
#include "relay.h"
#include "savestage.h"
#include "stage.h"
#include "store/connectionwrapper.h"
#include "store/itemclass.h"
#include "store/postgres/sessionpool.h"
#include "subtree.h"

namespace orvenmod::bench {
namespace {

constexpr std::chrono::microseconds kDelay{1000};

/// Each statement of a flight goes out alone, as the base of the seam has it.
class OneByOne : public store::Store {
public:
    std::unique_ptr<store::Connection> connect(const std::string& connectionString) override {
        return std::make_unique<store::ConnectionWrapper>(componentStore().connect(connectionString));
    }
};

class LineFolder {
public:
    LineFolder() : path_((std::filesystem::temp_directory_path() / "orvenline-XXXXXX").string()) {
        if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no folder for the slow line");
    }
    ~LineFolder() { std::filesystem::remove_all(path_); }
    LineFolder(const LineFolder&) = delete;
    LineFolder& operator=(const LineFolder&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

struct Cost {
    int roundTrips = 0;
    double milliseconds = 0;
};

class Commands {
public:
    Commands(const std::string& target, int firstClass) : items_(target), class_(firstClass) {
        appState().gConnStr = target;
        appState().gItemClassId = 3;
        appState().gItemTable = "ICItem";
    }

    double save(const Clock& clock) {
        const double took = items_.save(*windows_, clock);
        items_.restore();
        return took;
    }

    double design(std::size_t command, const Clock& clock) {
        return runCommand(*windows_, designerCommands(class_++)[command], store::kGoods, clock);
    }

    double deleteItem(const Clock& clock) {
        items_.save(*windows_, wallMilliseconds);
        const auto connection = componentStore().connect(appState().gConnStr);
        appState().gCurItemId = std::stoi(
            connection->open("select max(fItemId) as fId from ICItem where fItemId<" + std::to_string(kMoveTarget))
                .text("fId"));
        connection->close();
        const double took = leastOf(
            1,
            [] {
                if (!delDetail()) throw std::runtime_error("the item is in no bill, but was kept");
            },
            clock);
        items_.restore();
        return took;
    }

    // There, and the next time back.
    double move(const Subtree& subtree, const Clock& clock) {
        const bool there = away_.insert(subtree.id).second;
        if (!there) away_.erase(subtree.id);
        return leastOf(
            1, [&] { there ? moveThere(subtree) : moveBack(subtree); }, clock);
    }

    void use(MemoryStage& windows) { windows_ = &windows; }

    static const Subtree kMoved;
    static const Subtree kMovedBefore;

private:
    SaveStage items_;
    MemoryStage* windows_ = nullptr;
    int class_;
    std::set<int> away_;  // the subtrees that stand elsewhere
};

const Subtree Commands::kMoved{kMoveTarget + 1, 10000, "81"};
const Subtree Commands::kMovedBefore{kMoveTarget + 10001, 100, "82"};

struct Command {
    const char* name;
    double most;  ///< milliseconds on the line; 0 for none told
    int runs;
    std::function<double(Commands&, const Clock& clock)> run;
    std::function<double(Commands&, const Clock& clock)> before = run;  ///< so that all is prepared
};

const std::vector<Command>& allCommands() {
    const auto designing = [](std::size_t command) {
        return [command](Commands& commands, const Clock& clock) { return commands.design(command, clock); };
    };
    static const std::vector<Command> kAll = {
        {"saving a new item", 25, 5, [](Commands& commands, const Clock& clock) { return commands.save(clock); }},
        {"creating a class", 0, 3, designing(0)},
        {"adding a field", 0, 3, designing(1)},
        {"field setup, both views", 0, 3, designing(2)},
        {"deleting an item, its guard before", 0, 3,
         [](Commands& commands, const Clock& clock) { return commands.deleteItem(clock); }},
        {"move of 10000 rows", 3000, 1,
         [](Commands& commands, const Clock& clock) { return commands.move(Commands::kMoved, clock); },
         [](Commands& commands, const Clock& clock) { return commands.move(Commands::kMovedBefore, clock); }}};
    return kAll;
}

std::vector<Cost> costs(Commands& commands, store::Store& store, const Relay& line) {
    MemoryStage windows(&store);
    commands.use(windows);
    // A clock that counts round trips too: from its first reading to its last.
    std::vector<int> readings;
    const auto clock = [&] {
        readings.push_back(line.roundTrips());
        return wallMilliseconds();
    };
    std::vector<Cost> all;
    for (const Command& command : allCommands()) {
        command.before(commands, wallMilliseconds);
        Cost least{0, std::numeric_limits<double>::max()};
        for (int run = 0; run < command.runs; ++run) {
            readings.clear();
            least.milliseconds = std::min(least.milliseconds, command.run(commands, clock));
            least.roundTrips = readings.back() - readings.front();
        }
        all.push_back(least);
    }
    return all;
}

std::string whole(double value) { return std::to_string(std::lround(value)); }

}  // namespace

void measureLine(Report& report, BenchServer& server, const std::string& folder, int goods) {
    std::string target = server.goodsDatabase(folder, goods);
    const auto connection = componentStore().connect(target);
    connection->beginTrans();
    addMoveTarget(*connection);
    addSubtree(*connection, Commands::kMoved);
    addSubtree(*connection, Commands::kMovedBefore);
    connection->commitTrans();
    connection->close();
    server.run(target, "VACUUM ANALYZE");

    const LineFolder line;
    const Relay relay(line.path() + "/.s.PGSQL.5432", server.host() + "/.s.PGSQL.5432", kDelay);
    target.replace(target.find(server.host()), server.host().size(), line.path());
    OneByOne oneByOne;
    Commands commands(target, 2001);
    const std::vector<Cost> before = costs(commands, oneByOne, relay);
    const std::vector<Cost> after = costs(commands, componentStore(), relay);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const Command& command = allCommands()[i];
        report.note(std::string(command.name) + ": " + std::to_string(before[i].roundTrips) + " round trips, " +
                    whole(before[i].milliseconds) + " ms with each statement alone; " +
                    std::to_string(after[i].roundTrips) + ", " + whole(after[i].milliseconds) + " ms in flights");
        if (command.most > 0)
            report.ratio(command.name, after[i].milliseconds, "a fixed time", command.most, 1.0, "ms");
    }
    store::postgres::dropIdleSessions();
}

}  // namespace orvenmod::bench
