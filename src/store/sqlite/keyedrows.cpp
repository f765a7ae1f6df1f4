#include "store/sqlite/keyedrows.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "store/sqlite/fetch.h"
#include "store/sqlite/keyquery.h"
#include "store/sqlite/listkeys.h"
#include "store/sqlite/rowwalk.h"
#include "store/sqlite/snapshot.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/resultcolumns.h"

namespace orvenmod::store::sqlite {

namespace {

// Gives rows by their keys.
class RowReader {
public:
    using Keys = std::span<const std::int64_t>;

    RowReader(Database& database, const tsql::Translation& rows)
        : database_(database), columns_(rows.columns), statement_(database.prepareLasting(rows.statements[0])) {}

    /// `between` may read rows itself: no statement runs then.
    Recordset read(Keys keys, const std::function<void()>& between = {}) {
        Recordset rows = tsql::emptyRecordset(columns_);
        while (!keys.empty()) {
            database_.runtime().startStatement();
            const std::size_t count = std::min(kAtOnce, keys.size());
            add(keys.first(count), rows);
            keys = keys.subspan(count);
            if (between) between();
        }
        return rows;
    }

    /// So many of a million that most pages hold more than one of them.
    static constexpr std::size_t kAtOnce = 32768;

private:
    // They are found in the order in which they lie in the file, which saves half the time for many.
    void add(Keys keys, Recordset& rows) {
        std::vector<std::int64_t> foundKeys;
        const Recordset found = find(keys, foundKeys);
        std::vector<std::size_t> byKey(foundKeys.size());
        std::iota(byKey.begin(), byKey.end(), 0U);
        std::sort(byKey.begin(), byKey.end(),
                  [&](std::size_t left, std::size_t right) { return foundKeys[left] < foundKeys[right]; });
        for (const std::int64_t key : keys) {
            const auto at =
                std::lower_bound(byKey.begin(), byKey.end(), key,
                                 [&](std::size_t row, std::int64_t sought) { return foundKeys[row] < sought; });
            // Within one snapshot only a damaged file has a key without its row.
            if (at == byKey.end() || foundKeys[*at] != key) {
                throw failureOf(database_.handle(), SQLITE_CORRUPT, database_.file());
            }
            copy(found, *at, rows);
        }
    }

    Recordset find(Keys keys, std::vector<std::int64_t>& foundKeys) {
        sqlite3_stmt* statement = statement_.get();
        const ResetStatement reset(statement);
        bindKeyList(statement, keyList(keys));
        Recordset found = tsql::emptyRecordset(columns_);
        int code = sqlite3_step(statement);
        for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
            fetchRow(statement, columns_, found);
            foundKeys.push_back(sqlite3_column_int64(statement, found.columnCount()));
        }
        if (code != SQLITE_DONE) database_.fail(code);
        return found;
    }

    static void copy(const Recordset& from, std::size_t row, Recordset& to) {
        for (int column = 0; column < from.columnCount(); ++column) {
            if (const Value cell = from.cell(row, column)) {
                to.addText(*cell);
            } else {
                to.addNull();
            }
        }
        to.endRow();
    }

    Database& database_;
    std::vector<tsql::ResultColumn> columns_;
    Statement statement_;
};

class KeyedRows : public ListRows {
public:
    KeyedRows(std::unique_ptr<Snapshot> snapshot, std::unique_ptr<RowReader> reader, std::string_view sql, Keys keys,
              std::uint64_t mostLog, std::function<void()> progress)
        : snapshot_(std::move(snapshot)),
          reader_(std::move(reader)),
          progress_(std::move(progress)),
          sql_(sql),
          none_(reader_->read({})),
          keys_(std::move(keys)),
          mostLog_(mostLog) {}
    ~KeyedRows() override { letGo(); }

    const std::vector<Column>& columns() const override { return none_.columns(); }
    std::size_t rowCount() const override { return keys_.size(); }
    bool holds(std::size_t row) const override {
        return (walked_ && walked_->row == row) || find(row) != nullptr || expected_.find(row);
    }
    ListReading reading() const override { return ListReading::keys; }

    // In the order of the file: in that of the list each window would read most of the file's pages again.
    void forEachRow(std::span<const int> columns, const std::function<void(std::size_t)>& take) const override {
        // Whoever paints within a walk may need all rows for a sum.
        if (!snapshot_ || walked_) return ListRows::forEachRow(columns, take);
        if (fileOrder_.empty()) fileOrder_ = positionsByKey(keys_);
        try {
            walk(columns, take);
        } catch (...) {
            walked_.reset();
            throw;
        }
        walked_.reset();
    }

    Value cell(std::size_t row, int column) const override {
        if (walked_ && walked_->row == row) {
            if (const auto at = walked_->find(column)) return walked_->rows.cell(walked_->at, *at);
        }
        const Window* window = find(row);
        if (window == nullptr) {
            if (const auto at = expected_.find(row)) return expected_.rows.cell(*at, column);
            window = &fetched(row);
        }
        return window->rows.cell(row - window->first, column);
    }

    void expect(std::span<const std::uint32_t> rows) const override {
        if (rows.empty() || holds(rows.front())) return;
        const std::size_t held = expected_.order.size();
        const bool goesOn = held > 0 && rows.front() == expected_.next;
        const std::size_t size = goesOn ? nextSize(held) : 1;
        const auto together = rows.first(std::min(size, rows.size()));
        Keys keys;
        for (const std::uint32_t row : together)
            keys.push_back(keys_[row]);
        Expected expected{{together.begin(), together.end()}, read(keys)};
        if (rows.size() > together.size()) expected.next = rows[together.size()];
        expected_ = std::move(expected);
        fetchedAt_ = Clock::now();
    }

    std::size_t memory() const override {
        std::size_t bytes = keys_.capacity() * sizeof(std::int64_t) + fileOrder_.capacity() * sizeof(std::uint32_t);
        for (const Window& window : windows_)
            bytes += window.rows.memory();
        if (walked_) bytes += walked_->rows.memory();
        bytes += expected_.rows.memory() + expected_.order.capacity() * sizeof(std::uint32_t);
        return snapshot_ ? bytes + snapshot_->pageCache() : bytes;
    }

    void tend() override {
        if (!snapshot_ || walked_ || snapshot_->logSize() <= mostLog_) return;
        fetchAll();
        letGo();
    }

private:
    struct Window {
        std::size_t first = 0;
        Recordset rows;
    };
    /// The row that forEachRow() is at, in some rows that lie together in the file.
    struct Walked {
        std::vector<int> columns = {};
        Recordset rows = {};
        std::size_t row = static_cast<std::size_t>(-1);
        std::size_t at = 0;

        std::optional<int> find(int column) const {
            const auto found = std::find(columns.begin(), columns.end(), column);
            if (found == columns.end()) return std::nullopt;
            return static_cast<int>(found - columns.begin());
        }
    };
    /// Rows in an order of their reader's own, of which one is mostly looked at behind the other.
    struct Expected {
        std::vector<std::uint32_t> order;
        Recordset rows;
        std::optional<std::uint32_t> next = {};
        mutable std::size_t last = 0;

        std::optional<std::size_t> find(std::size_t row) const {
            for (const std::size_t at : {last, last + 1}) {
                if (at < order.size() && order[at] == row) return last = at;
            }
            const auto found = std::find(order.begin(), order.end(), row);
            if (found == order.end()) return std::nullopt;
            return last = static_cast<std::size_t>(found - order.begin());
        }
    };
    using Clock = std::chrono::steady_clock;
    /// Some screens full, in about a millisecond. Whoever looks at a row that doesn't follow the one before may go
    /// through a sorted list, and is given that row alone.
    static constexpr std::size_t kWindow = 256;
    static constexpr std::size_t kWindows = 8;
    /// Who is through a window that soon goes through all rows, and is given more at a time; a clerk who holds a key
    /// down takes ten times as long.
    static constexpr std::chrono::milliseconds kWalk{20};

    const Window* find(std::size_t row) const {
        for (const Window& window : windows_) {
            if (row >= window.first && row - window.first < window.rows.rowCount()) return &window;
        }
        return nullptr;
    }

    const Window& fetched(std::size_t row) const {
        const Window& last = windows_[last_];
        const std::size_t held = last.rows.rowCount();
        const std::size_t size = row == last.first + held ? nextSize(held) : 1;
        Window window = windowAt(row, size);
        // The rest of many would be held for nothing.
        if (size > kWindow) windows_ = {};
        last_ = (last_ + 1) % kWindows;
        windows_[last_] = std::move(window);
        fetchedAt_ = Clock::now();
        return windows_[last_];
    }

    /// Of what comes behind so many, which may be none yet.
    std::size_t nextSize(std::size_t held) const {
        const bool quick = held > 0 && Clock::now() - fetchedAt_ < kWalk * std::max<std::size_t>(held / kWindow, 1);
        return quick ? std::min(4 * held, RowReader::kAtOnce) : kWindow;
    }

    Window windowAt(std::size_t first, std::size_t count) const {
        const std::span keys(keys_);
        return {first, read(keys.subspan(first, std::min(count, keys.size() - first)))};
    }

    void fetchAll() {
        Recordset rows = read(keys_, progress_);
        windows_ = {};
        windows_[0] = {0, std::move(rows)};
        expected_ = {};
    }

    template <class Work>
    auto worded(Work work) const {
        try {
            return work();
        } catch (const tsql::Error& error) {
            throw tsql::worded(snapshot_->database().file().language, error);
        }
    }

    void walk(std::span<const int> columns, const std::function<void(std::size_t)>& take) const {
        Database& database = snapshot_->database();
        RowWalk reader = worded([&] { return RowWalk(database, tsql::keyedWalk(sql_, database.catalog(), columns)); });
        walked_ = Walked{.columns = {columns.begin(), columns.end()}};
        for (std::span<const std::uint32_t> left(fileOrder_); !left.empty();) {
            const auto rows = left.first(std::min(RowReader::kAtOnce, left.size()));
            Keys keys;
            for (const std::uint32_t row : rows)
                keys.push_back(keys_[row]);
            *walked_ = {.columns = std::move(walked_->columns)};
            walked_->rows = worded([&] { return reader.read(keys); });
            for (walked_->at = 0; walked_->at < rows.size(); ++walked_->at) {
                walked_->row = rows[walked_->at];
                take(walked_->row);
            }
            left = left.subspan(rows.size());
        }
    }

    Recordset read(RowReader::Keys keys, const std::function<void()>& between = {}) const {
        return worded([&] { return reader_->read(keys, between); });
    }

    void letGo() noexcept {
        reader_.reset();
        snapshot_.reset();
    }

    std::unique_ptr<Snapshot> snapshot_;  // null, as the reader, when all rows stand in the first window
    std::unique_ptr<RowReader> reader_;
    std::function<void()> progress_;
    std::string sql_;
    Recordset none_;  // has the columns
    Keys keys_;
    std::uint64_t mostLog_;
    mutable std::vector<std::uint32_t> fileOrder_;  // rows as they lie in the file, once somebody has walked
    mutable std::optional<Walked> walked_;
    mutable std::array<Window, kWindows> windows_;
    mutable std::size_t last_ = 0;  // the window that was fetched last
    mutable Expected expected_;
    mutable Clock::time_point fetchedAt_;
};

}  // namespace

std::unique_ptr<ListRows> openByKeys(const ListSource& source, std::string_view sql, const KeyedLimits& limits) {
    auto snapshot = Snapshot::take(source.connectionString, source.file);
    if (!snapshot) return nullptr;
    Database& database = snapshot->database();
    tsql::Shape shape;
    shape.scan(sql);
    const auto list = longList(database, sql, shape, limits.smallTable);
    if (!list) return nullptr;
    auto reader = std::make_unique<RowReader>(database, list->rows);
    database.setProgress(source.progress);
    Keys keys = listKeys(database, *list, shape);
    database.setProgress(nullptr);
    if (keys.size() <= limits.fewRows) {
        auto rows = std::make_unique<WholeRows>(reader->read(keys));
        reader.reset();
        return rows;
    }
    return std::make_unique<KeyedRows>(std::move(snapshot), std::move(reader), sql, std::move(keys), limits.mostLog,
                                       source.progress);
}

}  // namespace orvenmod::store::sqlite
