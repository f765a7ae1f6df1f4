// A connection to a server. A transaction is ODBC's manual commit mode, switched on by beginTrans and off at its end.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "store/connection.h"
#include "store/odbc/odbcsession.h"
#include "store/tsql/onestatement.h"

namespace orvenmod::store::odbc {

class OdbcConnection : public Connection {
public:
    /// Throws Failure of kind connection.
    explicit OdbcConnection(const std::string& connectionString)
        : session_(std::make_unique<OdbcSession>(connectionString)), language_(session_->language()) {}
    ~OdbcConnection() override;

    std::int64_t execute(std::string_view sql) override;
    Recordset open(std::string_view sql) override;
    std::unique_ptr<TableWriter> openTable(std::string_view table) override;
    void beginTrans() override;
    void commitTrans() override;
    void rollbackTrans() override;
    bool inTransaction() const override { return inTransaction_; }
    /// Reported between rows; ODBC tells nothing while the server works.
    void setProgress(std::function<void()> progress) override;
    void close() noexcept override;

    /// A new statement. Throws Failure where the connection is closed.
    OdbcHandle statement();
    /// A failure of this component's own, in the language of the connection string.
    Failure failure(int number, const std::vector<std::string>& arguments = {}) const {
        return tsql::worded(language_, number, arguments);
    }

private:
    /// Throws Failure where the text is not one statement.
    void look(std::string_view sql);
    void run(const OdbcHandle& statement, std::string_view sql);
    void endTransaction(SQLSMALLINT completion, int number);
    void setAutocommit(SQLULEN mode);

    std::unique_ptr<OdbcSession> session_;  // none once closed
    tsql::Language language_;
    tsql::OneStatement text_;
    bool inTransaction_ = false;
    std::function<void()> progress_;
};

}  // namespace orvenmod::store::odbc
