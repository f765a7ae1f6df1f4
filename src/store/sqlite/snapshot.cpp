#include "store/sqlite/snapshot.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "store/sqlite/handlepool.h"

namespace orvenmod::store::sqlite {

namespace {

std::int64_t numberOf(Database& database, const char* query) {
    const Statement statement = database.prepareLasting(query);
    const int code = sqlite3_step(statement.get());
    if (code != SQLITE_ROW) database.fail(code);
    return sqlite3_column_int64(statement.get(), 0);
}

}  // namespace

Snapshot::Snapshot(const std::string& connectionString)
    : connectionString_(connectionString), database_(takeHandle(connectionString)) {
    database_->runtime().startStatement();
    database_->run("BEGIN");
    // The first reading takes the snapshot.
    database_->catalog().refresh();
}

Snapshot::~Snapshot() {
    // Ended here, it leaves the handle what it knows of the schema; an open one would be undone.
    database_->tryRun("COMMIT");
    giveHandleBack(connectionString_, std::move(database_));
}

std::unique_ptr<Snapshot> Snapshot::take(const std::string& connectionString, const DatabaseFile::Identity& file) {
    try {
        auto snapshot = std::make_unique<Snapshot>(connectionString);
        const bool fits = snapshot->database().identity() == file && snapshot->standsBesideWriters();
        return fits ? std::move(snapshot) : nullptr;
    } catch (const Failure&) {
        // No second handle can be had just now.
        return nullptr;
    }
}

bool Snapshot::standsBesideWriters() {
    if (!database_->identity().writable || database_->file().access == DatabaseFile::Access::readOnly) return false;
    const Statement statement = database_->prepareLasting("PRAGMA journal_mode");
    return sqlite3_step(statement.get()) == SQLITE_ROW &&
           std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0))) == "wal";
}

std::uint64_t Snapshot::logSize() const {
    std::error_code none;
    const auto size = std::filesystem::file_size(database_->file().path + "-wal", none);
    return none ? 0 : size;
}

std::size_t Snapshot::pageCache() const {
    int used = 0;
    int highest = 0;
    sqlite3_db_status(database_->handle(), SQLITE_DBSTATUS_CACHE_USED, &used, &highest, 0);
    return static_cast<std::size_t>(used);
}

// The state is read first: what is written in between is in the snapshot, and the next state differs.
std::shared_ptr<Snapshot> SharedSnapshot::get(Database& connection, const std::string& connectionString) {
    const State state = stateOf(connection);
    std::shared_ptr<Snapshot> snapshot = snapshot_.lock();
    if (snapshot && state == state_) return snapshot;
    snapshot = Snapshot::take(connectionString, connection.identity());
    snapshot_ = snapshot;
    state_ = state;
    return snapshot;
}

SharedSnapshot::State SharedSnapshot::stateOf(Database& connection) {
    return {.others = numberOf(connection, "PRAGMA data_version"),
            .schema = numberOf(connection, "PRAGMA schema_version"),
            .own = sqlite3_total_changes64(connection.handle())};
}

}  // namespace orvenmod::store::sqlite
