#include "store/odbc/odbcconnection.h"

#include <utility>

#include "store/connectionstring.h"
#include "store/odbc/odbcfetch.h"
#include "store/odbc/odbcoutline.h"
#include "store/odbc/odbctableloader.h"
#include "store/odbc/odbctablewriter.h"
#include "store/odbc/serverstring.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

OdbcConnection::OdbcConnection(const std::string& connectionString) : environment_(SQL_HANDLE_ENV, SQL_NULL_HANDLE) {
    const std::string language = tsql::lowerText(ConnectionString(connectionString).get("Language"));
    if (language == "us_english" || language == "english") language_ = tsql::Language::english;
    SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    connection_ = OdbcHandle(SQL_HANDLE_DBC, environment_.get());
    const std::string text = serverString(connectionString);
    const SQLRETURN result =
        SQLDriverConnect(connection_.get(), nullptr, sqlText(text.c_str()), static_cast<SQLSMALLINT>(text.size()),
                         nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) {
        const Failure reported = connection_.failure();
        throw Failure(FailureKind::connection, reported.number(), reported.text());
    }
    open_ = true;
}

OdbcConnection::~OdbcConnection() { close(); }

Failure OdbcConnection::failure(int number, const std::vector<std::string>& arguments) const {
    return tsql::worded(language_, number, arguments);
}

OdbcHandle OdbcConnection::statement() {
    if (!open_) throw failure(tsql::kClosed);
    return {SQL_HANDLE_STMT, connection_.get()};
}

void OdbcConnection::run(const OdbcHandle& statement, std::string_view sql) {
    const std::string text(sql);
    const SQLRETURN result =
        SQLExecDirect(statement.get(), sqlText(text.c_str()), static_cast<SQLINTEGER>(text.size()));
    // A change that touches no row answers that there is no data.
    if (result != SQL_NO_DATA) statement.check(result);
}

std::int64_t OdbcConnection::execute(std::string_view sql) {
    const OdbcHandle handle = statement();
    run(handle, sql);
    SQLLEN touched = 0;
    SQLSMALLINT columns = 0;
    SQLNumResultCols(handle.get(), &columns);
    if (columns == 0) SQLRowCount(handle.get(), &touched);
    // Later results can hold the failure of a trigger.
    for (;;) {
        const SQLRETURN more = SQLMoreResults(handle.get());
        if (more == SQL_NO_DATA) break;
        handle.check(more);
    }
    return touched < 0 ? 0 : touched;
}

/// The count of its columns.
SQLSMALLINT OdbcConnection::runQuery(const OdbcHandle& statement, std::string_view sql) {
    run(statement, sql);
    SQLSMALLINT columns = 0;
    statement.check(SQLNumResultCols(statement.get(), &columns));
    if (columns == 0) throw failure(tsql::kNoRows);
    return columns;
}

Recordset OdbcConnection::open(std::string_view sql) {
    const OdbcHandle handle = statement();
    return fetchRows(handle, runQuery(handle, sql), progress_);
}

void OdbcConnection::read(std::string_view sql, const Part& part) {
    const OdbcHandle handle = statement();
    fetchParts(handle, runQuery(handle, sql), progress_, part);
}

Outline OdbcConnection::outline() { return outlineOf(*this); }

std::unique_ptr<TableLoader> OdbcConnection::openLoader(std::string_view table,
                                                        const std::vector<std::string>& fields) {
    return std::make_unique<OdbcTableLoader>(*this, table, fields);
}

std::unique_ptr<TableWriter> OdbcConnection::openTable(std::string_view table) {
    return std::make_unique<OdbcTableWriter>(*this, table);
}

void OdbcConnection::setAutocommit(SQLULEN mode) {
    connection_.check(
        SQLSetConnectAttr(connection_.get(), SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(mode), SQL_IS_UINTEGER));
}

void OdbcConnection::beginTrans() {
    if (!open_) throw failure(tsql::kClosed);
    if (inTransaction_) throw failure(tsql::kTransactionOpen);
    setAutocommit(SQL_AUTOCOMMIT_OFF);
    inTransaction_ = true;
}

void OdbcConnection::endTransaction(SQLSMALLINT completion, int number) {
    if (!open_) throw failure(tsql::kClosed);
    if (!inTransaction_) throw failure(number);
    connection_.check(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), completion));
    inTransaction_ = false;
    setAutocommit(SQL_AUTOCOMMIT_ON);
}

void OdbcConnection::commitTrans() { endTransaction(SQL_COMMIT, tsql::kCommitWithoutBegin); }
void OdbcConnection::rollbackTrans() { endTransaction(SQL_ROLLBACK, tsql::kRollbackWithoutBegin); }

void OdbcConnection::setProgress(std::function<void()> progress) {
    if (!open_) throw failure(tsql::kClosed);
    progress_ = std::move(progress);
}

void OdbcConnection::close() noexcept {
    if (!std::exchange(open_, false)) return;
    if (std::exchange(inTransaction_, false)) SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK);
    SQLDisconnect(connection_.get());
}

}  // namespace orvenmod::store::odbc
