// A category is hung elsewhere and back, with all below it: the dialog's routine, against the texts of its statements
// in a loop of sqlite3_exec. Both work on one copy of the goods, to which subtrees of three sizes are added.
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <vector>

#include "benches.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "stage.h"
#include "store/connectionwrapper.h"
#include "store/sqlite/database.h"
#include "store/sqlite/sqlitestore.h"
#include "store/trace.h"
#include "subtree.h"

namespace orvenmod::bench {
namespace {

namespace fs = std::filesystem;

constexpr double kMebibyte = 1024.0 * 1024.0;

/// Notes the heap at each change of a row, and the largest recordset. SQLite's own memory doesn't count: it is bounded
/// by the size of its cache.
class WeighedConnection : public store::ConnectionWrapper {
public:
    struct Weights {
        double least = std::numeric_limits<double>::max();
        double most = 0;
        std::size_t recordset = 0;
    };

    WeighedConnection(std::unique_ptr<store::Connection> target, Weights& weights)
        : ConnectionWrapper(std::move(target)), weights_(weights) {}

    std::int64_t execute(std::string_view sql) override {
        if (++statements_ % kEvery == 1) weigh();
        return ConnectionWrapper::execute(sql);
    }
    store::Recordset open(std::string_view sql) override {
        weigh();
        store::Recordset rows = ConnectionWrapper::open(sql);
        weights_.recordset = std::max(weights_.recordset, rows.memory());
        return rows;
    }

private:
    static constexpr int kEvery = 100;

    void weigh() {
        const struct mallinfo2 heap = mallinfo2();
        const auto held = static_cast<double>(heap.uordblks + heap.hblkhd) - static_cast<double>(sqlite3_memory_used());
        weights_.least = std::min(weights_.least, held);
        weights_.most = std::max(weights_.most, held);
    }

    Weights& weights_;
    int statements_ = 0;
};

class WeighedStore : public store::Store {
public:
    std::unique_ptr<store::Connection> connect(const std::string& connectionString) override {
        return std::make_unique<WeighedConnection>(componentStore().connect(connectionString), weights);
    }

    WeighedConnection::Weights weights;
};

class MoveStage {
public:
    MoveStage(const std::string& folder, int goods) : file_(folder + "/moves.db") {
        goodsDatabase(folder, goods);
        fs::copy_file(folder + "/goods-" + std::to_string(goods) + ".db", file_, fs::copy_options::overwrite_existing);
        AppState& state = appState();
        state.gConnStr = targetOf(file_);
        state.gItemClassId = 3;
        state.gItemTable = "ICItem";
        const auto connection = componentStore().connect(targetOf(file_));
        connection->beginTrans();
        addMoveTarget(*connection);
        for (const Subtree& subtree : subtrees)
            addSubtree(*connection, subtree);
        connection->commitTrans();
        connection->close();
    }
    ~MoveStage() {
        store::sqlite::SqliteStore::dropIdleHandles();
        for (const char* part : {"", "-wal", "-shm"})
            fs::remove(file_ + part);
    }
    MoveStage(const MoveStage&) = delete;
    MoveStage& operator=(const MoveStage&) = delete;

    /// Below the target and back to the top, by the routine; milliseconds of the two.
    double byRoutine(const Subtree& subtree, store::Store& store) {
        const QuietServices quiet(store);
        return leastOf(1, [&] {
            moveThere(subtree);
            moveBack(subtree);
        });
    }

    /// The texts of the same two moves' statements.
    std::vector<std::string> statements(const Subtree& subtree) {
        std::vector<std::string> texts;
        store::TracingStore tracing(componentStore(), [&texts](const store::TraceRecord& record) {
            if (record.operation == "begin") texts.emplace_back("begin immediate");
            if (record.operation == "commit") texts.emplace_back("commit");
            if (!record.sql.empty()) texts.push_back(record.sql);
        });
        byRoutine(subtree, tracing);
        return texts;
    }

    double bare(const std::vector<std::string>& statements) {
        store::sqlite::Database database(store::sqlite::DatabaseFile::parse(targetOf(file_)));
        return leastOf(1, [&] {
            for (const std::string& text : statements) {
                if (sqlite3_exec(database.handle(), text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
                    throw std::runtime_error(sqlite3_errmsg(database.handle()));
                }
            }
        });
    }

    const std::vector<Subtree> subtrees = {
        {kMoveTarget + 1, 1000, "81"}, {kMoveTarget + 1001, 10000, "82"}, {kMoveTarget + 11001, 100000, "83"}};

private:
    std::string file_;
};

}  // namespace

void measureMoves(Report& report, const std::string& folder, int goods) {
    constexpr int kRuns = 6;
    MoveStage stage(folder, goods);
    double shortest = std::numeric_limits<double>::max();
    double longest = 0;
    for (const Subtree& subtree : stage.subtrees) {
        const std::vector<std::string> statements = stage.statements(subtree);
        double ours = std::numeric_limits<double>::max();
        double bare = ours;
        for (int run = 0; run < kRuns; ++run) {
            ours = std::min(ours, stage.byRoutine(subtree, componentStore()));
            // Long, since each of its patterns scans the table.
            if (run % 2 == 0) bare = std::min(bare, stage.bare(statements));
        }
        report.ratio("move of " + std::to_string(subtree.rows) + " rows and back", ours, "their texts, sqlite3_exec",
                     bare, 1.0, "ms");
        const double perRow = ours * 1000 / 2 / subtree.rows;
        shortest = std::min(shortest, perRow);
        longest = std::max(longest, perRow);
    }
    report.ratio("a row of the slowest move", longest, "a row of the fastest", shortest, 1.25, "us");
    WeighedStore weighed;
    sqlite3_memory_highwater(1);
    stage.byRoutine(stage.subtrees.back(), weighed);
    // The rest is the allocator's own.
    report.ratio("memory of the longest move", (weighed.weights.most - weighed.weights.least) / kMebibyte,
                 "its recordset", static_cast<double>(weighed.weights.recordset) / kMebibyte, 1.05, "MiB");
    report.note("  SQLite beside it, its cache included: " +
                std::to_string(std::lround(static_cast<double>(sqlite3_memory_highwater(0)) / kMebibyte)) + " MiB");
}

}  // namespace orvenmod::bench
