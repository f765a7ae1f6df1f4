// A use of a PostgreSQL database.
//
// The server ends a transaction with the first statement that fails in it; the dialect leaves it open. So each
// statement within one goes out between a savepoint and its release, in one round trip; a failure goes back to the
// savepoint. The first needs none: the transaction is empty without it, and begins anew.
//
//   beginTrans
//   execute   BEGIN, the statement                          one round trip
//   execute   BEGIN, the statement: fails                   one, and one more for ROLLBACK
//   execute   SAVEPOINT, the statement, RELEASE             one
//   execute   SAVEPOINT, the statement: fails               one, and one more for ROLLBACK TO, RELEASE
//   executeAll   SAVEPOINT, statement, statement, ..., RELEASE   one; see postgresflight.cpp
//   commitTrans   COMMIT                                    one
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "store/connection.h"
#include "store/postgres/session.h"
#include "store/tsql/error.h"
#include "store/tsql/messages.h"
#include "store/tsql/shape.h"

namespace orvenmod::store::postgres {

class PostgresConnection : public Connection {
public:
    /// `paint` is called while a lost session is replaced.
    PostgresConnection(std::string connectionString, std::unique_ptr<Session> session, std::function<void()> paint);
    ~PostgresConnection() override;

    std::int64_t execute(std::string_view sql) override;
    using Connection::executeAll;
    void executeAll(std::span<const std::string> statements, const Done& done) override;
    Recordset open(std::string_view sql) override;
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

    /// The session. Throws Failure where the connection is closed or its transaction is lost; outside a transaction a
    /// session that the server has ended is replaced.
    Session& session();
    tsql::Language language() const { return language_; }
    /// What a store may do with a row that it could not store: nothing of it stays.
    using Values = std::function<std::string(const std::string& column)>;
    /// Stores one row. Throws Failure, tsql::Error.
    void storeRow(Prepared& statement, const std::string& text, const Parameters& parameters, const Values& values);
    struct Loaded {
        int column = RowFailure::kUnknown;
        std::string value = "NULL";
    };
    /// Copies rows in the server's own form into a table, by its native name; `loaded` tells of a cell for a message.
    /// Throws RowFailure, Failure.
    void loadRows(const std::string& table, const std::string& command, std::string_view rows,
                  const std::function<Loaded(std::size_t row, const std::string& column)>& loaded);
    /// Words what `work` throws.
    template <typename Work>
    auto worded(Work work);

private:
    /// `begun`: nothing of it has gone out. `lost`: the server has gone; it only can be rolled back.
    enum class Transaction { none, begun, open, lost };
    enum class Effect { reads, changes };
    enum class Look { atTheSchema, none };
    /// What goes when a unit fails: with `first` the transaction, which begins anew, with `later` all behind a
    /// savepoint.
    enum class Unit { alone, first, later };
    class Flight;

    CachedStatement& prepared(std::string_view sql);
    CachedStatement* preparedQuery(std::string_view sql);
    Result run(std::string_view sql, CachedStatement*& entry,
               const std::function<void(const PGresult* row)>& stream = nullptr);
    void runDefinition(std::string_view sql, CachedStatement* entry);
    void definitionMade(std::string_view sql, const std::string& object, const PGresult* before);
    std::optional<std::size_t> startUnit(Look look);
    Look lookOf(const CachedStatement& entry) const;
    std::size_t queueStatement(CachedStatement& entry, const Parameters& parameters);
    void endUnit();
    Answer sendUnit(Effect effect, const Session::Stream* stream = nullptr);
    void undoUnit();
    void commitOpen();
    bool isOvertaken(const Answer& answer, std::optional<std::size_t> lookAt, int& attempt) const;
    static std::int64_t touched(PGresult* result);
    [[noreturn]] void failStatement(std::string_view sql, const CachedStatement& entry, const PGresult* failure);
    [[noreturn]] void failChange(std::string_view sql, const PGresult* failure, const Values& values);
    [[noreturn]] void failLoad(const PGresult* failure, const std::string& table,
                               const std::function<Loaded(std::size_t row, const std::string& column)>& loaded);
    [[noreturn]] void failForLoss(const LostConnection& lost, server::Outcome outcome);

    std::string connectionString_;
    std::function<void()> paint_;
    tsql::Language language_;
    std::string server_;
    std::unique_ptr<Session> session_;
    bool open_ = true;
    Transaction transaction_ = Transaction::none;
    Unit unit_ = Unit::alone;
    bool looked_ = false;   // the open transaction has found the schema as expected
    bool defined_ = false;  // and it has changed it
    std::function<void()> progress_;
    tsql::Shape shape_;
};

template <typename Work>
auto PostgresConnection::worded(Work work) {
    try {
        return work();
    } catch (const tsql::Error& error) {
        throw tsql::worded(language_, error);
    } catch (const LostConnection& lost) {
        failForLoss(lost, server::Outcome::undone);
    }
}

}  // namespace orvenmod::store::postgres
