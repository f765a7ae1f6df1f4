#include "store/odbc/odbcsession.h"

#include "store/connectionstring.h"
#include "store/odbc/connectfailure.h"
#include "store/tsql/objectname.h"
#include "store/tsql/stringparts.h"

namespace orvenmod::store::odbc {

namespace {

constexpr const char* kLetters = "中文";
constexpr const char* kAlive = "select 1";
constexpr SQLULEN kAliveSeconds = 5;

std::string cell(const OdbcHandle& statement, SQLUSMALLINT column) {
    char buffer[512] = {};
    SQLLEN length = 0;
    statement.check(SQLGetData(statement.get(), column, SQL_C_CHAR, buffer, sizeof buffer, &length));
    return length == SQL_NULL_DATA ? "" : buffer;
}

}  // namespace

OdbcSession::OdbcSession(const std::string& connectionString)
    : language_(tsql::languageOf(ConnectionString(connectionString))) {
    const ConnectionString parts(connectionString);
    connect(serverStrings(connectionString), tsql::connectTimeout(parts));
    if (speaksTheDialect() || parts.has("Busy Timeout")) busyTimeout_ = tsql::busyTimeout(parts);
    applySettings();
    checkLetters();
    SQLUINTEGER calls = SQL_AM_NONE;
    SQLGetInfo(connection().get(), SQL_ASYNC_MODE, &calls, sizeof calls, nullptr);
    waiter_ = std::make_unique<OdbcWaiter>(calls == SQL_AM_STATEMENT ? OdbcWaiter::Calls::asynchronous
                                                                     : OdbcWaiter::Calls::blocking);
}

void OdbcSession::connect(const std::vector<ServerString>& strings, std::chrono::seconds limit) {
    for (const ServerString& string : strings) {
        string_ = string;
        try {
            handles_ = connectWithin(limit, string, language_);
            return;
        } catch (const Failure& failure) {
            if (&string == &strings.back() || !isServerAway(failure)) throw;
        }
    }
}

void OdbcSession::applySettings() const {
    if (!string_.laterDatabase.empty()) run("use " + tsql::bracketed(string_.laterDatabase));
    if (busyTimeout_) run("set lock_timeout " + std::to_string(busyTimeout_->count()));
}

void OdbcSession::run(const std::string& sql) const {
    const OdbcHandle statement(SQL_HANDLE_STMT, connection().get());
    const SQLRETURN result = SQLExecDirect(statement.get(), sqlText(sql.c_str()), static_cast<SQLINTEGER>(sql.size()));
    if (result == SQL_NO_DATA || SQL_SUCCEEDED(result)) return;
    throw connectFailure(statement.diagnostics(), string_, {}, language_);
}

// A driver that works in another character set makes other letters of these, and would store them.
void OdbcSession::checkLetters() {
    if (!speaksTheDialect()) {
        if (row("select '中文'").front() != kLetters)
            throw tsql::worded(language_, tsql::kLettersLost, {string_.driver});
        return;
    }
    const std::vector<std::string> answer = row("select N'中文','中文',db_name()");
    if (answer[0] != kLetters) throw tsql::worded(language_, tsql::kLettersLost, {string_.driver});
    if (answer[1] != kLetters) throw tsql::worded(language_, tsql::kNoChinese, {answer[2]});
}

std::vector<std::string> OdbcSession::row(const std::string& sql) const {
    const OdbcHandle statement(SQL_HANDLE_STMT, connection().get());
    statement.check(SQLExecDirect(statement.get(), sqlText(sql.c_str()), static_cast<SQLINTEGER>(sql.size())));
    SQLSMALLINT count = 0;
    statement.check(SQLNumResultCols(statement.get(), &count));
    statement.check(SQLFetch(statement.get()));
    std::vector<std::string> cells;
    for (SQLSMALLINT i = 1; i <= count; ++i)
        cells.push_back(cell(statement, static_cast<SQLUSMALLINT>(i)));
    return cells;
}

bool OdbcSession::alive() {
    const OdbcHandle statement(SQL_HANDLE_STMT, connection().get());
    SQLSetStmtAttr(statement.get(), SQL_ATTR_QUERY_TIMEOUT, reinterpret_cast<SQLPOINTER>(kAliveSeconds),
                   SQL_IS_UINTEGER);
    return SQL_SUCCEEDED(SQLExecDirect(statement.get(), sqlText(kAlive), SQL_NTS));
}

}  // namespace orvenmod::store::odbc
