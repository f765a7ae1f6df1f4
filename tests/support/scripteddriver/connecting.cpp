// The driver's entry points for environments and connections.
#include <algorithm>
#include <cstring>

#include "support/scripteddriver/handles.h"

using namespace orvenmod::test;

namespace orvenmod::test {

SQLRETURN resultOf(Handle& handle, const Answer& answer) {
    handle.diagnostics = answer.diagnostics;
    if (answer.fails) return SQL_ERROR;
    return answer.diagnostics.empty() ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

std::string textOf(const SQLCHAR* text, SQLLEN length) {
    const char* characters = reinterpret_cast<const char*>(text);
    return length == SQL_NTS ? std::string(characters) : std::string(characters, static_cast<std::size_t>(length));
}

void putText(const std::string& text, SQLCHAR* buffer, SQLSMALLINT room, SQLSMALLINT* length) {
    if (length != nullptr) *length = static_cast<SQLSMALLINT>(text.size());
    if (buffer == nullptr || room <= 0) return;
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(room) - 1);
    std::memcpy(buffer, text.data(), count);
    buffer[count] = 0;
}

}  // namespace orvenmod::test

namespace {

SQLRETURN unknown(Handle& handle) {
    handle.diagnostics = {{"HY092", 0, "[Scripted]Invalid attribute"}};
    return SQL_ERROR;
}

// The length says nothing: the driver manager hands on numbers with any.
bool isText(SQLINTEGER attribute) {
    return attribute == SQL_ATTR_CURRENT_CATALOG || attribute == SQL_ATTR_TRANSLATE_LIB;
}

}  // namespace

extern "C" {

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* handle) {
    Handle* made = nullptr;
    if (type == SQL_HANDLE_ENV) {
        made = new EnvironmentHandle;
    } else if (type == SQL_HANDLE_DBC) {
        auto* connection = new ConnectionHandle;
        connection->session = &ScriptedServer::get().sessions.emplace_back();
        made = connection;
    } else {
        auto* statement = new StatementHandle;
        statement->connection = &as<ConnectionHandle>(parent);
        made = statement;
    }
    *handle = made;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
    delete static_cast<Handle*>(handle);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

SQLRETURN SQL_API SQLDriverConnect(SQLHDBC handle, SQLHWND, SQLCHAR* text, SQLSMALLINT length, SQLCHAR*, SQLSMALLINT,
                                   SQLSMALLINT*, SQLUSMALLINT) {
    auto& connection = as<ConnectionHandle>(handle);
    Session& session = *connection.session;
    session.connectionString = textOf(text, length);
    ScriptedServer& server = ScriptedServer::get();
    const Answer answer = server.onConnect ? server.onConnect(session) : Answer{};
    session.open = true;
    if (answer.waits) server.wait();
    if (answer.fails) server.closed(session);
    return resultOf(connection, answer);
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle) {
    ScriptedServer::get().closed(*as<ConnectionHandle>(handle).session);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetConnectAttr(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length) {
    auto& connection = as<ConnectionHandle>(handle);
    if (attribute == ScriptedServer::get().refusedAttribute) return unknown(connection);
    Session& session = *connection.session;
    if (isText(attribute)) {
        session.texts[attribute] = textOf(static_cast<SQLCHAR*>(value), length);
        return SQL_SUCCESS;
    }
    session.numbers[attribute] = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(value));
    if (attribute == SQL_ATTR_AUTOCOMMIT) {
        session.autocommit = session.numbers[attribute] != SQL_AUTOCOMMIT_OFF;
        if (session.autocommit) session.inTransaction = false;
    }
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetConnectAttr(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    auto& connection = as<ConnectionHandle>(handle);
    const Session& session = *connection.session;
    auto* number = static_cast<SQLUINTEGER*>(value);
    if (attribute == SQL_ATTR_CONNECTION_DEAD) {
        *number = session.dead ? SQL_CD_TRUE : SQL_CD_FALSE;
        return SQL_SUCCESS;
    }
    const auto known = session.numbers.find(attribute);
    if (known == session.numbers.end()) return unknown(connection);
    *number = static_cast<SQLUINTEGER>(known->second);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLEndTran(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT completion) {
    if (type != SQL_HANDLE_DBC) return SQL_SUCCESS;
    auto& connection = as<ConnectionHandle>(handle);
    ScriptedServer& server = ScriptedServer::get();
    const Answer answer = server.onEnd ? server.onEnd(*connection.session, completion == SQL_COMMIT) : Answer{};
    if (!answer.fails || answer.endsTransaction) connection.session->inTransaction = false;
    if (answer.dies) connection.session->dead = true;
    return resultOf(connection, answer);
}

SQLRETURN SQL_API SQLGetInfo(SQLHDBC, SQLUSMALLINT type, SQLPOINTER value, SQLSMALLINT room, SQLSMALLINT* length) {
    const ScriptedServer& server = ScriptedServer::get();
    const auto text = server.information.find(type);
    const auto put = [&](const std::string& answer) -> SQLRETURN {
        putText(answer, static_cast<SQLCHAR*>(value), room, length);
        return SQL_SUCCESS;
    };
    if (text != server.information.end()) return put(text->second);
    if (type == SQL_DRIVER_ODBC_VER) return put("03.52");
    if (type == SQL_DRIVER_NAME) return put("scripted.so");
    if (type == SQL_DBMS_NAME) return put("Scripted");
    if (type == SQL_ASYNC_MODE) {
        *static_cast<SQLUINTEGER*>(value) = server.asynchronous ? SQL_AM_STATEMENT : SQL_AM_NONE;
        return SQL_SUCCESS;
    }
    *static_cast<SQLUSMALLINT*>(value) =
        type == SQL_CURSOR_COMMIT_BEHAVIOR || type == SQL_CURSOR_ROLLBACK_BEHAVIOR ? 2 : 0;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetDiagRec(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT record, SQLCHAR* state, SQLINTEGER* number,
                                SQLCHAR* text, SQLSMALLINT room, SQLSMALLINT* length) {
    const std::vector<Diagnostic>& diagnostics = static_cast<Handle*>(handle)->diagnostics;
    const auto index = static_cast<std::size_t>(record - 1);
    if (index >= diagnostics.size()) return SQL_NO_DATA;
    putText(diagnostics[index].state, state, 6, nullptr);
    if (number != nullptr) *number = diagnostics[index].number;
    putText(diagnostics[index].text, text, room, length);
    return SQL_SUCCESS;
}

// Without it the driver manager takes no record at all.
SQLRETURN SQL_API SQLGetDiagField(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT, SQLSMALLINT identifier, SQLPOINTER value,
                                  SQLSMALLINT, SQLSMALLINT*) {
    if (identifier != SQL_DIAG_NUMBER) return SQL_ERROR;
    *static_cast<SQLINTEGER*>(value) = static_cast<SQLINTEGER>(static_cast<Handle*>(handle)->diagnostics.size());
    return SQL_SUCCESS;
}

}  // extern "C"
