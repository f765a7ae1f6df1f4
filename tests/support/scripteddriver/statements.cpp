// The driver's entry points for statements.
#include <algorithm>
#include <cstring>

#include "support/scripteddriver/handles.h"

using namespace orvenmod::test;

namespace orvenmod::test {

namespace {

SQLRETURN notImplemented(StatementHandle& statement) {
    statement.diagnostics = {{"HYC00", 0, "[Scripted]Optional feature not implemented"}};
    return SQL_ERROR;
}

SQLRETURN cancelled(StatementHandle& statement) {
    statement.polls = -1;
    statement.diagnostics = {{"HY008", 0, "[Scripted]Operation canceled"}};
    return SQL_ERROR;
}

// The result of the answer that stands in the statement.
SQLRETURN finished(StatementHandle& statement) {
    statement.polls = -1;
    const Answer& answer = statement.answer;
    Session& session = *statement.connection->session;
    if (!session.autocommit) session.inTransaction = true;
    if (answer.endsTransaction) session.inTransaction = false;
    if (answer.dies) session.dead = true;
    const SQLRETURN result = resultOf(statement, answer);
    const bool nothing = result == SQL_SUCCESS && answer.columns.empty() && answer.touched == 0;
    const bool change = statement.text.starts_with("update") || statement.text.starts_with("delete");
    return nothing && change ? SQL_NO_DATA : result;
}

Answer answerOf(ScriptedServer& server, Session& session, const std::string& text) {
    for (const auto& [beginning, answer] : server.questions) {
        if (!text.starts_with(beginning)) continue;
        session.questions.push_back(text);
        return answer;
    }
    session.statements.push_back(text);
    return server.onStatement ? server.onStatement(session, text) : Answer{};
}

}  // namespace

SQLRETURN execute(StatementHandle& statement) {
    ScriptedServer& server = ScriptedServer::get();
    if (statement.polls > 0) return --statement.polls == 0 ? finished(statement) : SQL_STILL_EXECUTING;
    {
        const std::lock_guard lock(server.mutex);
        Session& session = *statement.connection->session;
        if (!statement.parameters.empty()) server.parameters.push_back(statement.given);
        statement.answer = answerOf(server, session, statement.text);
        statement.row = 0;
        for (SQLULEN set = 0; statement.setStates != nullptr && set < statement.sets; ++set) {
            const bool fails = static_cast<int>(set) == statement.answer.failedSet;
            statement.setStates[set] = fails ? SQL_PARAM_ERROR : SQL_PARAM_SUCCESS;
        }
    }
    if (statement.answer.waits && !server.wait()) return cancelled(statement);
    if (statement.asynchronous && statement.answer.polls > 0) {
        statement.polls = statement.answer.polls;
        return SQL_STILL_EXECUTING;
    }
    return finished(statement);
}

namespace {

std::optional<std::string> parameterText(const Parameter& parameter, SQLULEN set) {
    const SQLLEN length = parameter.length == nullptr ? SQL_NTS : parameter.length[set];
    if (length == SQL_NULL_DATA) return std::nullopt;
    if (parameter.type == SQL_C_LONG || parameter.type == SQL_C_SLONG)
        return std::to_string(static_cast<SQLINTEGER*>(parameter.data)[set]);
    return textOf(static_cast<SQLCHAR*>(parameter.data) + static_cast<std::size_t>(parameter.room) * set, length);
}

bool isStreamed(const Parameter& parameter) {
    return parameter.length != nullptr &&
           (*parameter.length == SQL_DATA_AT_EXEC || *parameter.length <= SQL_LEN_DATA_AT_EXEC_OFFSET);
}

// Collects the parameters up to the next that is streamed.
SQLRETURN collect(StatementHandle& statement) {
    for (; statement.given.size() < statement.parameters.size();) {
        const Parameter& parameter = statement.parameters[statement.given.size()];
        if (isStreamed(parameter)) return SQL_NEED_DATA;
        statement.given.push_back(parameterText(parameter, statement.sets - 1));
    }
    return execute(statement);
}

SQLRETURN start(StatementHandle& statement) {
    if (statement.polls > 0) return execute(statement);
    // All sets but the last, which goes out with the statement.
    for (SQLULEN set = 0; set + 1 < statement.sets; ++set) {
        ScriptedRow& row = ScriptedServer::get().parameters.emplace_back();
        for (const Parameter& parameter : statement.parameters)
            row.push_back(parameterText(parameter, set));
    }
    statement.given.clear();
    statement.asked = 0;
    return collect(statement);
}

}  // namespace

}  // namespace orvenmod::test

extern "C" {

SQLRETURN SQL_API SQLPrepare(SQLHSTMT handle, SQLCHAR* text, SQLINTEGER length) {
    as<StatementHandle>(handle).text = textOf(text, length);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLExecute(SQLHSTMT handle) { return start(as<StatementHandle>(handle)); }

SQLRETURN SQL_API SQLExecDirect(SQLHSTMT handle, SQLCHAR* text, SQLINTEGER length) {
    auto& statement = as<StatementHandle>(handle);
    if (statement.polls <= 0) statement.text = textOf(text, length);
    return start(statement);
}

SQLRETURN SQL_API SQLParamData(SQLHSTMT handle, SQLPOINTER* wanted) {
    auto& statement = as<StatementHandle>(handle);
    if (statement.polls > 0) return execute(statement);
    if (statement.asked == statement.given.size() + 1) statement.given.emplace_back(std::move(statement.streamed));
    statement.streamed.clear();
    const SQLRETURN result = collect(statement);
    if (result != SQL_NEED_DATA) return result;
    statement.asked = statement.given.size() + 1;
    *wanted = statement.parameters[statement.given.size()].data;
    return SQL_NEED_DATA;
}

SQLRETURN SQL_API SQLPutData(SQLHSTMT handle, SQLPOINTER data, SQLLEN length) {
    if (length != SQL_NULL_DATA) as<StatementHandle>(handle).streamed += textOf(static_cast<SQLCHAR*>(data), length);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLBindParameter(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT, SQLSMALLINT type, SQLSMALLINT,
                                   SQLULEN, SQLSMALLINT, SQLPOINTER data, SQLLEN room, SQLLEN* length) {
    auto& parameters = as<StatementHandle>(handle).parameters;
    parameters.resize(std::max<std::size_t>(parameters.size(), number));
    parameters[static_cast<std::size_t>(number - 1)] = {type, data, room, length};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLCancel(SQLHSTMT) {
    ScriptedServer::get().cancel();
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    auto& statement = as<StatementHandle>(handle);
    const auto number = reinterpret_cast<SQLULEN>(value);
    if (attribute == SQL_ATTR_ASYNC_ENABLE) {
        const bool wanted = number == SQL_ASYNC_ENABLE_ON;
        if (wanted && !ScriptedServer::get().asynchronous) {
            return notImplemented(statement);
        }
        statement.asynchronous = wanted;
    }
    if (attribute == SQL_ATTR_PARAMSET_SIZE) {
        if (ScriptedServer::get().oneSetAtATime) return notImplemented(statement);
        statement.sets = number;
    }
    if (attribute == SQL_ATTR_PARAM_STATUS_PTR) statement.setStates = static_cast<SQLUSMALLINT*>(value);
    if (attribute == SQL_ATTR_ROW_ARRAY_SIZE) statement.rowsAtOnce = number;
    if (attribute == SQL_ATTR_ROWS_FETCHED_PTR) statement.rowsFetched = static_cast<SQLULEN*>(value);
    if (attribute == SQL_ATTR_ROW_STATUS_PTR) statement.rowStatus = static_cast<SQLUSMALLINT*>(value);
    return SQL_SUCCESS;
}

// The driver manager asks for the four descriptors of a new statement.
SQLRETURN SQL_API SQLGetStmtAttr(SQLHSTMT handle, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    *static_cast<SQLHANDLE*>(value) = handle;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT option) {
    auto& statement = as<StatementHandle>(handle);
    if (option == SQL_CLOSE) statement.answer = {};
    if (option == SQL_UNBIND) statement.bound.clear();
    if (option == SQL_RESET_PARAMS) statement.parameters.clear();
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLCloseCursor(SQLHSTMT handle) {
    as<StatementHandle>(handle).answer = {};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT handle) {
    auto& statement = as<StatementHandle>(handle);
    if (statement.answer.later.empty()) return SQL_NO_DATA;
    std::vector<Answer> later = std::move(statement.answer.later);
    statement.answer = later.front();
    statement.answer.later.assign(later.begin() + 1, later.end());
    statement.row = 0;
    return finished(statement);
}

SQLRETURN SQL_API SQLTables(SQLHSTMT handle, SQLCHAR*, SQLSMALLINT, SQLCHAR* owner, SQLSMALLINT ownerLength,
                            SQLCHAR* table, SQLSMALLINT tableLength, SQLCHAR*, SQLSMALLINT) {
    auto& statement = as<StatementHandle>(handle);
    std::string name = owner == nullptr ? "" : textOf(owner, ownerLength) + ".";
    if (table != nullptr) name += textOf(table, tableLength);
    ScriptedServer::get().catalogue.push_back("tables " + name);
    statement.text = "tables " + name;
    return execute(statement);
}

}  // extern "C"
