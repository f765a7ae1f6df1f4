#include "store/odbc/odbcconnection.h"

#include <utility>

#include "store/odbc/odbcfetch.h"
#include "store/odbc/odbctablewriter.h"

namespace orvenmod::store::odbc {

OdbcConnection::~OdbcConnection() { close(); }

OdbcHandle OdbcConnection::statement() {
    if (!session_) throw failure(tsql::kClosed);
    return {SQL_HANDLE_STMT, session_->connection().get()};
}

void OdbcConnection::look(std::string_view sql) {
    try {
        text_.scan(sql);
    } catch (const tsql::Error& error) {
        throw tsql::worded(language_, error);
    }
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
    look(sql);
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

Recordset OdbcConnection::open(std::string_view sql) {
    const OdbcHandle handle = statement();
    look(sql);
    run(handle, sql);
    SQLSMALLINT columns = 0;
    handle.check(SQLNumResultCols(handle.get(), &columns));
    if (columns == 0) throw failure(tsql::kNoRows);
    return fetchRows(handle, columns, progress_);
}

std::unique_ptr<TableWriter> OdbcConnection::openTable(std::string_view table) {
    return std::make_unique<OdbcTableWriter>(*this, table);
}

void OdbcConnection::setAutocommit(SQLULEN mode) {
    session_->connection().check(SQLSetConnectAttr(session_->connection().get(), SQL_ATTR_AUTOCOMMIT,
                                                   reinterpret_cast<SQLPOINTER>(mode), SQL_IS_UINTEGER));
}

void OdbcConnection::beginTrans() {
    if (!session_) throw failure(tsql::kClosed);
    if (inTransaction_) throw failure(tsql::kTransactionOpen);
    setAutocommit(SQL_AUTOCOMMIT_OFF);
    inTransaction_ = true;
}

void OdbcConnection::endTransaction(SQLSMALLINT completion, int number) {
    if (!session_) throw failure(tsql::kClosed);
    if (!inTransaction_) throw failure(number);
    session_->connection().check(SQLEndTran(SQL_HANDLE_DBC, session_->connection().get(), completion));
    inTransaction_ = false;
    setAutocommit(SQL_AUTOCOMMIT_ON);
}

void OdbcConnection::commitTrans() { endTransaction(SQL_COMMIT, tsql::kCommitWithoutBegin); }
void OdbcConnection::rollbackTrans() { endTransaction(SQL_ROLLBACK, tsql::kRollbackWithoutBegin); }

void OdbcConnection::setProgress(std::function<void()> progress) {
    if (!session_) throw failure(tsql::kClosed);
    progress_ = std::move(progress);
}

void OdbcConnection::close() noexcept {
    if (!session_) return;
    if (std::exchange(inTransaction_, false)) SQLEndTran(SQL_HANDLE_DBC, session_->connection().get(), SQL_ROLLBACK);
    session_.reset();
}

}  // namespace orvenmod::store::odbc
