// A connection to a server. A transaction is the server's own, begun and ended by its statements. The server may end
// one by itself, as a deadlock's victim or after a failure; that is asked for after every failure within one.
//
// A session from the pool may have died while it waited. Asking costs as much as a statement, so a query, or the
// beginning of a transaction, is its own question where the session was used just now: it does no harm twice.
//
//   select ..    answered: the session lives
//   select ..    connection lost    connect    select ..
//   update ..    select 1 first, since nobody knew whether it had been done
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "store/connection.h"
#include "store/odbc/odbcsession.h"
#include "store/odbc/odbcwork.h"
#include "store/odbc/widetext.h"
#include "store/server/lostconnection.h"
#include "store/server/progress.h"
#include "store/tsql/onestatement.h"

namespace orvenmod::store::odbc {

class OdbcConnection : public Connection {
public:
    /// Uses an idle session of the string or a new one. Throws Failure of kind connection.
    explicit OdbcConnection(const std::string& connectionString, OdbcSession::Paint paint = {});
    ~OdbcConnection() override;

    std::int64_t execute(std::string_view sql) override;
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

    /// A new statement, of a session that the server answers. Throws Failure where the connection is closed or its
    /// transaction is lost.
    OdbcHandle statement();
    /// Runs work of such a statement. Throws Failure.
    void run(const std::shared_ptr<OdbcWork>& work, server::Outcome ifLost = server::Outcome::undone);
    /// Throws Failure for a text that a column of that set can't hold: no text at all, or with characters that the
    /// database's code page doesn't have.
    void checkText(std::string_view text, CharacterSet set);
    /// A failure of this component's own, in the language of the connection string.
    Failure failure(int number, const std::vector<std::string>& arguments = {}) const {
        return tsql::worded(language_, number, arguments);
    }

private:
    /// `lost`: the server ended it by itself; it only can be rolled back.
    enum class Transaction { none, open, lost };

    void requireUsable() const;
    OdbcSession& session();
    OdbcSession& provenSession();
    OdbcHandle newStatement() const { return {SQL_HANDLE_STMT, session_->connection().get()}; }
    template <typename Work>
    std::shared_ptr<Work> runOnAny(std::string_view sql);
    bool ask(const std::shared_ptr<OdbcWork>& question) noexcept;
    bool answers() noexcept;
    void giveUp(const std::shared_ptr<OdbcWork>& work) noexcept;
    /// Throws Failure where the text is not one statement.
    void look(std::string_view sql);
    void prepare();
    void prepareQuery(std::string_view sql);
    void checkCharacters(std::string_view text);
    std::int64_t change(std::string_view sql);
    void end(std::string_view sql, server::Outcome ifLost = server::Outcome::undone);
    void settle(const std::shared_ptr<OdbcWork>& work) noexcept;
    bool isLost() const;
    bool hasTransaction() noexcept;
    void undo() noexcept;

    std::string connectionString_;
    OdbcSession::Paint paint_;
    std::unique_ptr<OdbcSession> session_;  // none once closed, or given up
    tsql::Language language_;
    std::string server_;
    tsql::OneStatement text_;
    bool open_ = true;
    bool lost_ = false;  // the session
    Transaction transaction_ = Transaction::none;
    server::Progress progress_;
};

}  // namespace orvenmod::store::odbc
