#include "store/sqlite/keyedrows.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <span>
#include <system_error>
#include <utility>

#include "store/sqlite/binding.h"
#include "store/sqlite/fetch.h"
#include "store/sqlite/handlepool.h"
#include "store/sqlite/listkeys.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/resultcolumns.h"

namespace orvenmod::store::sqlite {

namespace {

// A handle of the pool with a read transaction, given back at the end.
class Snapshot {
public:
    explicit Snapshot(const std::string& connectionString)
        : connectionString_(connectionString), database_(takeHandle(connectionString)) {
        database_->runtime().startStatement();
        database_->run("BEGIN");
        // The first reading takes the snapshot.
        database_->catalog().refresh();
    }
    ~Snapshot() { giveHandleBack(connectionString_, std::move(database_)); }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    Database& database() { return *database_; }

    /// Whether others can write while it is held.
    bool standsBesideWriters() {
        if (!database_->identity().writable || database_->file().access == DatabaseFile::Access::readOnly) return false;
        const Statement statement = database_->prepareLasting("PRAGMA journal_mode");
        return sqlite3_step(statement.get()) == SQLITE_ROW &&
               std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0))) == "wal";
    }

    /// Of the file, which is used from its beginning again where no reader needs it, and never gets shorter.
    std::uint64_t logSize() const {
        std::error_code none;
        const auto size = std::filesystem::file_size(database_->file().path + "-wal", none);
        return none ? 0 : size;
    }

    std::size_t pageCache() const {
        int used = 0;
        int highest = 0;
        sqlite3_db_status(database_->handle(), SQLITE_DBSTATUS_CACHE_USED, &used, &highest, 0);
        return static_cast<std::size_t>(used);
    }

private:
    std::string connectionString_;
    std::unique_ptr<Database> database_;
};

// Gives rows by their keys.
class RowReader {
public:
    RowReader(Database& database, const tsql::Translation& row)
        : database_(database), columns_(row.columns), statement_(database.prepareLasting(row.statements[0])) {}

    Recordset read(std::span<const std::int64_t> keys) {
        database_.runtime().startStatement();
        Recordset rows = tsql::emptyRecordset(columns_);
        for (const std::int64_t key : keys)
            add(key, rows);
        return rows;
    }

private:
    void add(std::int64_t key, Recordset& rows) {
        const ResetStatement reset(statement_.get());
        const std::size_t before = rows.rowCount();
        checkBound(sqlite3_bind_int64(statement_.get(), 1, key));
        const int code = fetchRows(statement_.get(), columns_, rows);
        if (code != SQLITE_DONE) database_.fail(code);
        // Within one snapshot only a damaged file has a key without its row.
        if (rows.rowCount() != before + 1) throw failureOf(database_.handle(), SQLITE_CORRUPT, database_.file());
    }

    Database& database_;
    std::vector<tsql::ResultColumn> columns_;
    Statement statement_;
};

class KeyedRows : public ListRows {
public:
    KeyedRows(std::unique_ptr<Snapshot> snapshot, std::unique_ptr<RowReader> reader, std::vector<std::int64_t> keys,
              std::uint64_t mostGrowth)
        : snapshot_(std::move(snapshot)),
          reader_(std::move(reader)),
          none_(reader_->read({})),
          keys_(std::move(keys)),
          mostLog_(snapshot_->logSize() + mostGrowth) {}
    ~KeyedRows() override { letGo(); }

    const std::vector<Column>& columns() const override { return none_.columns(); }
    std::size_t rowCount() const override { return keys_.size(); }
    bool holds(std::size_t row) const override { return find(row) != nullptr; }
    ListReading reading() const override { return ListReading::keys; }

    Value cell(std::size_t row, int column) const override {
        const Window* window = find(row);
        if (window == nullptr) window = &fetched(row);
        return window->rows.cell(row - window->first, column);
    }

    std::size_t memory() const override {
        std::size_t bytes = keys_.capacity() * sizeof(std::int64_t);
        for (const Window& window : windows_)
            bytes += window.rows.memory();
        return snapshot_ ? bytes + snapshot_->pageCache() : bytes;
    }

    void tend() override {
        if (!snapshot_ || snapshot_->logSize() <= mostLog_) return;
        windows_[0] = windowAt(0, keys_.size());
        letGo();
    }

private:
    struct Window {
        std::size_t first = 0;
        Recordset rows;
    };
    /// Some screens full, in about a millisecond.
    static constexpr std::size_t kWindow = 256;
    static constexpr std::size_t kWindows = 8;

    const Window* find(std::size_t row) const {
        for (const Window& window : windows_) {
            if (row >= window.first && row - window.first < window.rows.rowCount()) return &window;
        }
        return nullptr;
    }

    const Window& fetched(std::size_t row) const {
        Window window = windowAt(row - row % kWindow, kWindow);
        next_ = (next_ + 1) % kWindows;
        windows_[next_] = std::move(window);
        return windows_[next_];
    }

    Window windowAt(std::size_t first, std::size_t count) const {
        const std::span keys(keys_);
        try {
            return {first, reader_->read(keys.subspan(first, std::min(count, keys.size() - first)))};
        } catch (const tsql::Error& error) {
            throw tsql::worded(snapshot_->database().file().language, error);
        }
    }

    void letGo() noexcept {
        reader_.reset();
        snapshot_.reset();
    }

    std::unique_ptr<Snapshot> snapshot_;  // null, as the reader, when all rows stand in the first window
    std::unique_ptr<RowReader> reader_;
    Recordset none_;  // has the columns
    std::vector<std::int64_t> keys_;
    std::uint64_t mostLog_;
    mutable std::array<Window, kWindows> windows_;
    mutable std::size_t next_ = 0;  // the window that was fetched last
};

std::unique_ptr<Snapshot> snapshotOf(const std::string& connectionString, const DatabaseFile::Identity& file) {
    try {
        auto snapshot = std::make_unique<Snapshot>(connectionString);
        const bool fits = snapshot->database().identity() == file && snapshot->standsBesideWriters();
        return fits ? std::move(snapshot) : nullptr;
    } catch (const Failure&) {
        // No second handle can be had just now.
        return nullptr;
    }
}

// Null for a small table, and for one whose rows have no key of SQLite's own.
std::unique_ptr<RowReader> readerOf(Database& database, const tsql::KeyedList& list, std::int64_t smallTable) {
    try {
        const Statement greatest = database.prepareLasting(list.greatestKey);
        if (sqlite3_step(greatest.get()) != SQLITE_ROW) return nullptr;
        if (sqlite3_column_int64(greatest.get(), 0) <= smallTable) return nullptr;
        return std::make_unique<RowReader>(database, list.row);
    } catch (const Failure&) {
        return nullptr;
    }
}

}  // namespace

std::unique_ptr<ListRows> openByKeys(const ListSource& source, std::string_view sql, const KeyedLimits& limits) {
    auto snapshot = snapshotOf(source.connectionString, source.file);
    if (!snapshot) return nullptr;
    Database& database = snapshot->database();
    const auto list = tsql::keyedList(sql, database.catalog());
    auto reader = list ? readerOf(database, *list, limits.smallTable) : nullptr;
    if (!reader) return nullptr;
    tsql::Shape shape;
    shape.scan(sql);
    database.setProgress(source.progress);
    auto keys = listKeys(database, *list, shape);
    database.setProgress(nullptr);
    if (keys.size() <= limits.fewRows) {
        auto rows = std::make_unique<WholeRows>(reader->read(keys));
        reader.reset();
        return rows;
    }
    return std::make_unique<KeyedRows>(std::move(snapshot), std::move(reader), std::move(keys), limits.logGrowth);
}

}  // namespace orvenmod::store::sqlite
