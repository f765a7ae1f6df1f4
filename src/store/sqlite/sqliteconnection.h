// A use of the embedded database.
//
// Transactions begin with BEGIN IMMEDIATE, which takes the writer's place at once. A deferred one that reads first and
// writes later would find its snapshot overtaken by another writer and die with "busy" at a moment where waiting can't
// help; so the waiting is done at the beginning, where it does.
#pragma once

#include <memory>
#include <string>

#include "store/connection.h"
#include "store/sqlite/database.h"
#include "store/sqlite/snapshot.h"
#include "store/tsql/shape.h"

namespace orvenmod::store::sqlite {

class SqliteConnection : public Connection {
public:
    SqliteConnection(std::string connectionString, std::unique_ptr<Database> database);
    ~SqliteConnection() override;

    std::int64_t execute(std::string_view sql) override;
    Recordset open(std::string_view sql) override;
    std::unique_ptr<ListRows> openList(std::string_view sql) override;
    std::unique_ptr<ListRows> openUnseen(std::string_view sql) override;
    void read(std::string_view sql, const Part& part) override;
    Outline outline() override;
    std::unique_ptr<TableLoader> openLoader(std::string_view table, const std::vector<std::string>& fields) override;
    std::unique_ptr<TableWriter> openTable(std::string_view table) override;
    void beginTrans() override;
    void commitTrans() override;
    void rollbackTrans() override;
    bool inTransaction() const override { return transaction_ != Transaction::none; }
    void setProgress(std::function<void()> progress) override;
    void close() noexcept override;

    // For the table writer and the loader.

    /// The open database. Throws Failure where the connection is closed or its transaction is lost.
    Database& database();
    /// Runs `work`, which stores one row. SQLite itself undoes that when it fails: a savepoint would only copy the
    /// pages that the row takes over from deleted ones, and hold them in memory; a photo's are as large as the photo.
    void storeRow(const std::function<void()>& work);

private:
    /// `lost`: SQLite undid it by itself, on a full disk or without memory; it only can be rolled back.
    enum class Transaction { none, open, lost };

    /// Runs `work` so that it has no effect when it throws, and leaves an open transaction open.
    void atomically(const std::function<void()>& work);

    template <typename Work>
    auto worded(Work work);
    template <typename Step>
    void runQuery(std::string_view sql, Step step);
    template <typename Step>
    void run(std::string_view sql, CachedStatement* entry, Step step);
    std::int64_t runChange(std::string_view sql, CachedStatement& entry);
    void runDefinition(const tsql::Translation& translation);
    [[noreturn]] void failChange(std::string_view sql, const tsql::Translation& translation, int code);
    void undo() noexcept;
    void noteLostTransaction() noexcept;

    std::string connectionString_;
    tsql::Language language_;
    std::unique_ptr<Database> database_;
    Transaction transaction_ = Transaction::none;
    tsql::Shape shape_;
    SharedSnapshot unseen_;
};

}  // namespace orvenmod::store::sqlite
