#include "store/odbc/greeting.h"

#include <utility>

#include "store/odbc/connectfailure.h"
#include "store/tsql/objectname.h"

namespace orvenmod::store::odbc {

namespace {

constexpr const char* kLetters = "中文";

std::string cell(const OdbcHandle& statement, SQLUSMALLINT column) {
    char buffer[512] = {};
    SQLLEN length = 0;
    statement.check(SQLGetData(statement.get(), column, SQL_C_CHAR, buffer, sizeof buffer, &length));
    return length == SQL_NULL_DATA ? "" : buffer;
}

std::vector<std::string> row(const OdbcHandle& connection, const std::string& sql) {
    const OdbcHandle statement(SQL_HANDLE_STMT, connection.get());
    statement.check(SQLExecDirect(statement.get(), sqlText(sql.c_str()), static_cast<SQLINTEGER>(sql.size())));
    SQLSMALLINT count = 0;
    statement.check(SQLNumResultCols(statement.get(), &count));
    statement.check(SQLFetch(statement.get()));
    std::vector<std::string> cells;
    for (SQLSMALLINT i = 1; i <= count; ++i)
        cells.push_back(cell(statement, static_cast<SQLUSMALLINT>(i)));
    return cells;
}

}  // namespace

Greeting::Greeting(ServerString string, std::optional<std::chrono::milliseconds> busyTimeout, tsql::Language language)
    : string_(std::move(string)), busyTimeout_(busyTimeout), language_(language) {}

void Greeting::operator()(const OdbcHandle& connection) const {
    if (!string_.laterDatabase.empty()) run(connection, "use " + tsql::bracketed(string_.laterDatabase));
    if (busyTimeout_) run(connection, "set lock_timeout " + std::to_string(busyTimeout_->count()));
    checkLetters(connection);
}

void Greeting::run(const OdbcHandle& connection, const std::string& sql) const {
    const OdbcHandle statement(SQL_HANDLE_STMT, connection.get());
    const SQLRETURN result = SQLExecDirect(statement.get(), sqlText(sql.c_str()), static_cast<SQLINTEGER>(sql.size()));
    if (result == SQL_NO_DATA || SQL_SUCCEEDED(result)) return;
    throw connectFailure(statement.diagnostics(), string_, {}, language_);
}

// A driver that works in another character set makes other letters of these, and would store them.
void Greeting::checkLetters(const OdbcHandle& connection) const {
    if (string_.kind == DriverKind::other) {
        if (row(connection, "select '中文'").front() != kLetters)
            throw tsql::worded(language_, tsql::kLettersLost, {string_.driver});
        return;
    }
    const std::vector<std::string> answer = row(connection, "select N'中文','中文',db_name()");
    if (answer[0] != kLetters) throw tsql::worded(language_, tsql::kLettersLost, {string_.driver});
    if (answer[1] != kLetters) throw tsql::worded(language_, tsql::kNoChinese, {answer[2]});
}

}  // namespace orvenmod::store::odbc
