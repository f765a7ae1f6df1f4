#include "store/sqlite/unseenrows.h"

#include <optional>
#include <utility>

#include "store/sqlite/binding.h"
#include "store/sqlite/fetch.h"
#include "store/sqlite/listkeys.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/error.h"
#include "store/tsql/keyedlist.h"
#include "store/tsql/messages.h"
#include "store/tsql/resultcolumns.h"

namespace orvenmod::store::sqlite {

namespace {

// All rows of the query, as the database's handle sees them.
Recordset fetched(Database& database, const std::string& sql) {
    database.runtime().startStatement();
    tsql::Shape shape;
    shape.scan(sql);
    const CachedStatement& entry = database.prepare(sql, shape);
    const ResetStatement reset(entry.statement.get());
    bindLiterals(entry.statement.get(), entry.translation, shape);
    Recordset rows = tsql::emptyRecordset(entry.translation.columns);
    const int code = fetchRows(entry.statement.get(), entry.translation.columns, rows);
    if (code != SQLITE_DONE) database.fail(code);
    return rows;
}

class UnseenRows : public ListRows {
public:
    UnseenRows(std::shared_ptr<Snapshot> snapshot, std::string_view sql, Recordset none, std::size_t count,
               std::uint64_t mostLog)
        : snapshot_(std::move(snapshot)), sql_(sql), rows_(std::move(none)), count_(count), mostLog_(mostLog) {}

    const std::vector<Column>& columns() const override { return rows_.columns(); }
    std::size_t rowCount() const override { return count_; }
    bool holds(std::size_t) const override { return !snapshot_; }
    ListReading reading() const override { return ListReading::unseen; }

    Value cell(std::size_t row, int column) const override {
        if (snapshot_) fetch();
        return rows_.cell(row, column);
    }

    std::size_t memory() const override { return snapshot_ ? rows_.memory() + snapshot_->pageCache() : rows_.memory(); }

    void tend() override {
        if (snapshot_ && snapshot_->logSize() > mostLog_) fetch();
    }

private:
    void fetch() const {
        Database& database = snapshot_->database();
        try {
            Recordset rows = fetched(database, sql_);
            // Within one snapshot only a damaged file has another number of them.
            if (rows.rowCount() != count_) throw failureOf(database.handle(), SQLITE_CORRUPT, database.file());
            rows_ = std::move(rows);
        } catch (const tsql::Error& error) {
            throw tsql::worded(database.file().language, error);
        }
        snapshot_.reset();
    }

    mutable std::shared_ptr<Snapshot> snapshot_;  // null when the rows are fetched
    std::string sql_;
    mutable Recordset rows_;
    std::size_t count_;
    std::uint64_t mostLog_;
};

std::size_t countOf(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape) {
    database.runtime().startStatement();
    // SQLite leaves out an order within, which a count doesn't need, only where there is one outside.
    const Statement statement =
        database.prepareLasting("SELECT count(*) FROM (" + list.keys.statements[0] + ") ORDER BY 1");
    bindLiterals(statement.get(), list.keys, shape);
    const int code = sqlite3_step(statement.get());
    if (code != SQLITE_ROW) database.fail(code);
    return static_cast<std::size_t>(sqlite3_column_int64(statement.get(), 0));
}

}  // namespace

std::unique_ptr<ListRows> openUnseenRows(Database& connection, const std::string& connectionString,
                                         SharedSnapshot& shared, std::string_view sql, const UnseenLimits& limits) {
    connection.catalog().refresh();
    tsql::Shape shape;
    shape.scan(sql);
    const std::optional<tsql::KeyedList> list = longList(connection, sql, shape, limits.smallTable);
    if (!list) return nullptr;
    std::shared_ptr<Snapshot> snapshot = shared.get(connection, connectionString);
    if (!snapshot) return nullptr;
    Database& database = snapshot->database();
    database.setProgress(connection.runtime().progress);
    const std::size_t count = countOf(database, *list, shape);
    database.setProgress(nullptr);
    if (count <= limits.fewRows) return nullptr;
    return std::make_unique<UnseenRows>(std::move(snapshot), sql, tsql::emptyRecordset(list->rows.columns), count,
                                        limits.mostLog);
}

}  // namespace orvenmod::store::sqlite
