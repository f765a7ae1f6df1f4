// One native handle with what is kept with it from use to use: functions, catalog, prepared statements.
// Lives in the pool between two uses; see handlepool.h.
//
// prepare() is where a text of the dialect meets what is known of it:
//
//   select fname from tblItem where fitemid=5    a new shape: translated by the catalog, prepared, kept
//   select fname from tblItem where fitemid=6    the same shape: what was kept
//   create index i on tblItem(fname)             translated, not kept
#pragma once

#include <sqlite3.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "store/failure.h"
#include "store/sqlite/databasefile.h"
#include "store/sqlite/runtime.h"
#include "store/sqlite/sqlitecatalog.h"
#include "store/sqlite/statement.h"
#include "store/sqlite/statementcache.h"

namespace orvenmod::store::sqlite {

class Database {
public:
    /// Opens the file. Throws Failure of kind connection or busy.
    explicit Database(DatabaseFile file);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* handle() const { return handle_; }
    const DatabaseFile& file() const { return file_; }
    const DatabaseFile::Identity& identity() const { return identity_; }
    Runtime& runtime() { return runtime_; }
    SqliteCatalog& catalog() { return catalog_; }
    StatementCache& cache() { return cache_; }

    /// The translation and prepared statement of a shape; from the cache, or made and kept where it can be.
    /// Throws tsql::Error, Failure.
    CachedStatement& prepare(std::string_view sql, const tsql::Shape& shape);
    /// Drops an entry that the schema has overtaken, so that it is translated anew.
    void forget(const CachedStatement& entry);

    /// Prepares one statement of the target's text. A statement so prepared does not follow a change of the schema
    /// but fails with SQLITE_SCHEMA, so that it is translated anew. Throws Failure.
    Statement prepareNative(const std::string& text);

    /// Likewise one that follows changes of the schema by itself, since nothing but its own text says what it does.
    Statement prepareLasting(const std::string& text);

    /// Runs a statement without rows and parameters ("BEGIN IMMEDIATE"), prepared once. Throws Failure.
    void run(const char* text);
    /// Likewise, but ignores a failure.
    void tryRun(const char* text) noexcept;

    void setProgress(std::function<void()> progress);

    /// The failure that the last call on the handle met, as the server would word it, or what a function or the
    /// progress callback failed with.
    [[noreturn]] void fail(int code);

    // For the pool.

    /// Whether the file still is the one that stands at the path. Throws Failure where none does, as a first opening
    /// would.
    bool alive() const { return file_.identify() == identity_; }
    /// Undoes an open transaction and resets every statement, so that the handle holds no lock.
    bool reset() noexcept;

private:
    void open();
    sqlite3_stmt* nativeStatement(const char* text);
    static int onProgress(void* self);
    static int onBusy(void* self, int count);
    bool reportProgress() noexcept;

    DatabaseFile file_;
    DatabaseFile::Identity identity_;
    sqlite3* handle_ = nullptr;
    Runtime runtime_;
    SqliteCatalog catalog_;
    StatementCache cache_;
    std::vector<std::pair<const char*, Statement>> natives_;
    std::chrono::steady_clock::time_point waitingSince_;
};

}  // namespace orvenmod::store::sqlite
