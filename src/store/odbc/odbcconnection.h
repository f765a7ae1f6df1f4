// A connection to a server. A transaction is ODBC's manual commit mode, switched on by beginTrans and off at its end.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "store/connection.h"
#include "store/odbc/odbchandle.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

class OdbcConnection : public Connection {
public:
    /// Throws Failure of kind connection.
    explicit OdbcConnection(const std::string& connectionString);
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
    bool inTransaction() const override { return inTransaction_; }
    /// Reported between rows; ODBC tells nothing while the server works.
    void setProgress(std::function<void()> progress) override;
    void close() noexcept override;

    /// A new statement. Throws Failure where the connection is closed.
    OdbcHandle statement();
    /// A failure of this component's own, in the language of the connection string.
    Failure failure(int number, const std::vector<std::string>& arguments = {}) const;

private:
    void run(const OdbcHandle& statement, std::string_view sql);
    SQLSMALLINT runQuery(const OdbcHandle& statement, std::string_view sql);
    void endTransaction(SQLSMALLINT completion, int number);
    void setAutocommit(SQLULEN mode);

    tsql::Language language_ = tsql::Language::chinese;
    OdbcHandle environment_;
    OdbcHandle connection_;
    bool open_ = false;
    bool inTransaction_ = false;
    std::function<void()> progress_;
};

}  // namespace orvenmod::store::odbc
