// Seam one: the store. Called by the gateway (mdlMain), the data control and every database routine;
// implemented by store/sqlite and store/odbc, and by the decorators in store/trace.h and store/fault.h.
// One thread: that of the host's call.
//
// The statement that arrives here is the system's own text in the SQL Server dialect, to the blank. One call
// carries one statement: a second one behind a ';' and comments are refused as a syntax failure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/failure.h"
#include "store/listrows.h"
#include "store/outline.h"
#include "store/recordset.h"

namespace orvenmod::store {

/// Adds rows to one table field by field: addNew, set..., update, and again. What was set and not
/// updated is dropped. Lives no longer than its connection stays open.
class TableWriter {
public:
    virtual ~TableWriter() = default;

    virtual void addNew() = 0;
    /// A field of the row begun, as text; the store converts it to the column's type when the row is stored.
    virtual void set(std::string_view field, std::string_view text) = 0;
    virtual void setNull(std::string_view field) = 0;
    /// Binary contents; `bytes` must live until update().
    virtual void setBinary(std::string_view field, std::span<const std::byte> bytes) = 0;
    /// Stores the row. Throws Failure; the row is then dropped and the table as before.
    virtual void update() = 0;
};

/// A row that a loader could not store.
class RowFailure : public Failure {
public:
    static constexpr int kUnknown = -1;

    RowFailure(const Failure& failure, std::size_t row, int column = kUnknown)
        : Failure(failure), row_(row), column_(column) {}

    /// From 0, of the rows that were being added.
    std::size_t row() const { return row_; }
    /// From 0; kUnknown where the store can't say.
    int column() const { return column_; }

private:
    std::size_t row_;
    int column_;
};

/// Adds many rows to one table, as fast as its store can. Lives no longer than its connection stays open.
class TableLoader {
public:
    virtual ~TableLoader() = default;

    /// Stores the rows: each cell in the field that openLoader() named at its place. Throws RowFailure, Failure; what
    /// of the rows is stored then is open, so that it is called in a transaction, which is to be rolled back.
    virtual void add(const Recordset& rows) = 0;
};

/// The most that read() holds in memory at a time: what is reached first. A larger row comes alone.
inline constexpr std::size_t kRowsPerPart = 4096;
inline constexpr std::size_t kBytesPerPart = 4UL << 20;

class Connection {
public:
    virtual ~Connection() = default;

    /// Runs a statement that gives no rows; the count of rows it touched (0 for DDL).
    /// On failure the statement had no effect, and an open transaction stays open. A server may end one with a failure
    /// by itself: every call but rollbackTrans and close then throws Failure 3930, so that nothing of it runs alone.
    virtual std::int64_t execute(std::string_view sql) = 0;

    /// Told the rows of each statement of executeAll as it is done.
    using Done = std::function<void(std::int64_t rows)>;
    /// Runs statements of which none waits for another's answer, in their order, each as execute() would. A server gets
    /// them in one flight, so that a routine of many statements costs one round trip. The first that fails is thrown;
    /// those before it keep their effect, those behind it have none.
    virtual void executeAll(std::span<const std::string> statements, const Done& done);
    void executeAll(std::span<const std::string> statements) { executeAll(statements, nullptr); }

    /// Runs a query and fetches it whole.
    virtual Recordset open(std::string_view sql) = 0;

    /// Runs the query of a list: the rows, order and texts of open(), of which the store may fetch each when it is
    /// looked at. By default all are fetched here.
    virtual std::unique_ptr<ListRows> openList(std::string_view sql) { return std::make_unique<WholeRows>(open(sql)); }

    /// The same for a list that may never be looked at: the store may only count its rows until somebody does.
    virtual std::unique_ptr<ListRows> openUnseen(std::string_view sql) {
        return std::make_unique<WholeRows>(open(sql));
    }

    /// Takes some rows of a query; at least one row, but for a query that has none.
    using Part = std::function<void(const Recordset& rows)>;
    /// Runs a query and hands its rows over part by part, so that a table of any size passes through. `part` must not
    /// use the connection; what it throws ends the query and goes on to the caller.
    virtual void read(std::string_view sql, const Part& part) = 0;

    /// What the database holds. Throws Failure where it can't be read whole.
    virtual Outline outline() = 0;

    /// Opens a table for loading, named as in a statement. An identity column among the fields takes the values given.
    /// Throws Failure 208, 207.
    virtual std::unique_ptr<TableLoader> openLoader(std::string_view table, const std::vector<std::string>& fields) = 0;

    /// Opens a table for adding. Throws Failure 208 where there is none.
    virtual std::unique_ptr<TableWriter> openTable(std::string_view table) = 0;

    virtual void beginTrans() = 0;
    /// Throws Failure 3902 without a transaction.
    virtual void commitTrans() = 0;
    /// Throws Failure 3903 without a transaction.
    virtual void rollbackTrans() = 0;
    virtual bool inTransaction() const = 0;

    /// Called now and then (about ten times a second) while a statement takes long, so that windows can
    /// paint. Empty for none. It must not use the connection. What it throws ends the statement and passes on.
    virtual void setProgress(std::function<void()> progress) = 0;

    /// Undoes an open transaction and lets go of the database. Never throws. Every later call but close() throws.
    virtual void close() noexcept = 0;
};

inline void Connection::executeAll(std::span<const std::string> statements, const Done& done) {
    for (const std::string& sql : statements) {
        const std::int64_t rows = execute(sql);
        if (done) done(rows);
    }
}

/// Makes connections; which kind, the connection string decides.
class Store {
public:
    virtual ~Store() = default;

    /// Opens the database that the string names. Throws Failure (kind connection) with a text that says
    /// what is wrong.
    virtual std::unique_ptr<Connection> connect(const std::string& connectionString) = 0;
};

}  // namespace orvenmod::store
