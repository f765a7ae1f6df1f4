#include "store/sqlite/sqliteconnection.h"

#include <utility>

#include "store/sqlite/binding.h"
#include "store/sqlite/columnadding.h"
#include "store/sqlite/fetch.h"
#include "store/sqlite/handlepool.h"
#include "store/sqlite/keyedrows.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/sqlite/sqliteoutline.h"
#include "store/sqlite/sqlitetableloader.h"
#include "store/sqlite/sqlitetablewriter.h"
#include "store/sqlite/unseenrows.h"
#include "store/tsql/literals.h"
#include "store/tsql/resultcolumns.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::StatementKind;

constexpr const char* kBegin = "BEGIN IMMEDIATE";
constexpr const char* kCommit = "COMMIT";
constexpr const char* kRollback = "ROLLBACK";
constexpr const char* kSavepoint = "SAVEPOINT statement";
constexpr const char* kRelease = "RELEASE statement";
constexpr const char* kRollbackTo = "ROLLBACK TO statement";

// More changes of the schema than that while one statement starts are no accident.
constexpr int kMostTranslations = 10;

}  // namespace

SqliteConnection::SqliteConnection(std::string connectionString, std::unique_ptr<Database> database)
    : connectionString_(std::move(connectionString)),
      language_(database->file().language),
      database_(std::move(database)) {}

SqliteConnection::~SqliteConnection() { close(); }

Database& SqliteConnection::database() {
    if (!database_) throw tsql::worded(language_, tsql::kClosed, {});
    noteLostTransaction();
    if (transaction_ == Transaction::lost) throw tsql::worded(language_, tsql::kTransactionLost, {});
    return *database_;
}

template <typename Work>
auto SqliteConnection::worded(Work work) {
    database().runtime().startStatement();
    try {
        return work();
    } catch (const tsql::Error& error) {
        throw tsql::worded(language_, error);
    }
}

// Binds and steps a statement, and again from its translation on when the schema has overtaken it.
// `step(statement, translation)` gives the last result code.
//
// A kept translation was true of the schema of its time, and another process may have changed that since. To ask before
// each run would cost a reading of the file; SQLite asks anyway and answers SQLITE_SCHEMA, before the first row:
//
//   here                                          elsewhere
//   select * from tblItem   a, b: 2 columns
//                                                 alter table tblItem add c int
//   select * from tblItem   SQLITE_SCHEMA; translated again: a, b, c
template <typename Step>
void SqliteConnection::run(std::string_view sql, CachedStatement* entry, Step step) {
    for (int attempt = 1;; ++attempt) {
        sqlite3_stmt* statement = entry->statement.get();
        int code = SQLITE_OK;
        {
            const ResetStatement reset(statement);
            bindLiterals(statement, entry->translation, shape_);
            code = step(statement, entry->translation);
            if (code == SQLITE_DONE) return;
            code = sqlite3_reset(statement);  // only now a statement tells what it failed with
            if ((code & 0xFF) != SQLITE_SCHEMA || attempt == kMostTranslations) {
                failChange(sql, entry->translation, code);
            }
        }
        database_->forget(*entry);
        entry = &database_->prepare(sql, shape_);
    }
}

std::int64_t SqliteConnection::execute(std::string_view sql) {
    return worded([&]() -> std::int64_t {
        shape_.scan(sql);
        CachedStatement& entry = database_->prepare(sql, shape_);
        switch (entry.translation.kind) {
            case StatementKind::query:
                run(sql, &entry, [](sqlite3_stmt* statement, const tsql::Translation&) {
                    int code = SQLITE_ROW;
                    while (code == SQLITE_ROW)
                        code = sqlite3_step(statement);
                    return code;
                });
                return 0;
            case StatementKind::change:
                return runChange(sql, entry);
            case StatementKind::ddl:
                runDefinition(entry.translation);
                return 0;
            case StatementKind::beginTransaction:
                beginTrans();
                return 0;
            case StatementKind::commitTransaction:
                commitTrans();
                return 0;
            case StatementKind::rollbackTransaction:
                rollbackTrans();
                return 0;
        }
        return 0;
    });
}

template <typename Step>
void SqliteConnection::runQuery(std::string_view sql, Step step) {
    worded([&] {
        shape_.scan(sql);
        CachedStatement& entry = database_->prepare(sql, shape_);
        if (entry.translation.kind != StatementKind::query) throw tsql::Error(tsql::kNoRows);
        run(sql, &entry, step);
    });
}

Recordset SqliteConnection::open(std::string_view sql) {
    Recordset rows;
    runQuery(sql, [&rows](sqlite3_stmt* statement, const tsql::Translation& translation) {
        rows = tsql::emptyRecordset(translation.columns);
        return fetchRows(statement, translation.columns, rows);
    });
    return rows;
}

std::unique_ptr<ListRows> SqliteConnection::openList(std::string_view sql) {
    // What an open transaction has done, only its own handle sees.
    if (transaction_ == Transaction::none) {
        auto rows = worded([&] {
            return openByKeys({connectionString_, database_->identity(), database_->runtime().progress}, sql);
        });
        if (rows) return rows;
    }
    return std::make_unique<WholeRows>(open(sql));
}

std::unique_ptr<ListRows> SqliteConnection::openUnseen(std::string_view sql) {
    if (transaction_ == Transaction::none) {
        auto rows = worded([&] { return openUnseenRows(*database_, connectionString_, unseen_, sql); });
        if (rows) return rows;
    }
    return std::make_unique<WholeRows>(open(sql));
}

void SqliteConnection::read(std::string_view sql, const Part& part) {
    runQuery(sql, [&part](sqlite3_stmt* statement, const tsql::Translation& translation) {
        return fetchParts(statement, translation.columns, part);
    });
}

Outline SqliteConnection::outline() {
    return worded([this] {
        database_->catalog().refresh();
        return outlineOf(*database_);
    });
}

std::unique_ptr<TableLoader> SqliteConnection::openLoader(std::string_view table,
                                                          const std::vector<std::string>& fields) {
    return worded([&]() -> std::unique_ptr<TableLoader> {
        database_->catalog().refresh();
        return std::make_unique<SqliteTableLoader>(*this, table, fields);
    });
}

std::int64_t SqliteConnection::runChange(std::string_view sql, CachedStatement& entry) {
    std::int64_t count = 0;
    const auto work = [&] {
        run(sql, &entry, [&](sqlite3_stmt* statement, const tsql::Translation&) {
            const int code = sqlite3_step(statement);
            count = sqlite3_changes64(database_->handle());
            return code;
        });
    };
    // Outside a transaction SQLite itself undoes a statement that fails. Within one, what was done before stays.
    if (transaction_ == Transaction::none) {
        work();
    } else {
        atomically(work);
    }
    return count;
}

void SqliteConnection::runDefinition(const tsql::Translation& translation) {
    atomically([&] {
        const auto& added = translation.addedColumns;
        if (!added.empty() && addByNewTable(*database_, translation.table, added)) return;
        for (const std::string& text : translation.statements) {
            const Statement statement = database_->prepareNative(text);
            int code = SQLITE_ROW;
            while (code == SQLITE_ROW)
                code = sqlite3_step(statement.get());
            // A definition that fails on rows (a unique index, a select into) fails as an insert of them would.
            if (code != SQLITE_DONE) failChange("insert", translation, sqlite3_reset(statement.get()));
        }
    });
    database_->catalog().clear();
}

void SqliteConnection::failChange(std::string_view sql, const tsql::Translation& translation, int code) {
    const Runtime& runtime = database_->runtime();
    if ((code & 0xFF) == SQLITE_CONSTRAINT && !runtime.error && !runtime.interruption) {
        throw constraintFailure(database_->handle(), code, database_->file(), tsql::changeVerb(sql),
                                [&](const std::string& column) { return tsql::newValue(translation, shape_, column); });
    }
    database_->fail(code);
}

void SqliteConnection::atomically(const std::function<void()>& work) {
    const bool within = transaction_ == Transaction::open;
    database_->run(within ? kSavepoint : kBegin);
    try {
        work();
        database_->run(within ? kRelease : kCommit);
    } catch (...) {
        undo();
        throw;
    }
}

void SqliteConnection::storeRow(const std::function<void()>& work) {
    try {
        work();
    } catch (...) {
        noteLostTransaction();
        throw;
    }
}

void SqliteConnection::undo() noexcept {
    // What the schema was within the work is undone with it.
    database_->catalog().clear();
    noteLostTransaction();
    // SQLite has undone all of it, so that there is nothing left to roll back.
    if (sqlite3_get_autocommit(database_->handle()) != 0) return;
    if (transaction_ == Transaction::none) {
        database_->tryRun(kRollback);
    } else {
        database_->tryRun(kRollbackTo);
        database_->tryRun(kRelease);
    }
}

void SqliteConnection::noteLostTransaction() noexcept {
    if (transaction_ == Transaction::open && sqlite3_get_autocommit(database_->handle()) != 0) {
        transaction_ = Transaction::lost;
    }
}

std::unique_ptr<TableWriter> SqliteConnection::openTable(std::string_view table) {
    return worded([&]() -> std::unique_ptr<TableWriter> {
        database_->catalog().refresh();
        return std::make_unique<SqliteTableWriter>(*this, table);
    });
}

void SqliteConnection::beginTrans() {
    worded([this] {
        if (transaction_ != Transaction::none) throw tsql::Error(tsql::kTransactionOpen);
        database_->run(kBegin);
        transaction_ = Transaction::open;
    });
}

void SqliteConnection::commitTrans() {
    worded([this] {
        if (transaction_ == Transaction::none) throw tsql::Error(tsql::kCommitWithoutBegin);
        try {
            database_->run(kCommit);
        } catch (...) {
            noteLostTransaction();
            throw;
        }
        transaction_ = Transaction::none;
    });
}

void SqliteConnection::rollbackTrans() {
    if (database_) noteLostTransaction();
    if (transaction_ == Transaction::lost) {
        transaction_ = Transaction::none;
        return;
    }
    worded([this] {
        if (transaction_ == Transaction::none) throw tsql::Error(tsql::kRollbackWithoutBegin);
        database_->catalog().clear();
        database_->run(kRollback);
        transaction_ = Transaction::none;
    });
}

void SqliteConnection::setProgress(std::function<void()> progress) { database().setProgress(std::move(progress)); }

void SqliteConnection::close() noexcept {
    if (!database_) return;
    transaction_ = Transaction::none;
    giveHandleBack(connectionString_, std::move(database_));
}

}  // namespace orvenmod::store::sqlite
