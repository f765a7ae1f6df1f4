// The handles of the scripted driver.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

#include "support/scripteddriver/scriptedserver.h"

namespace orvenmod::test {

/// What SQLGetDiagRec reads: of any kind of handle.
struct Handle {
    virtual ~Handle() = default;
    std::vector<Diagnostic> diagnostics;
};

struct EnvironmentHandle : Handle {};

struct ConnectionHandle : Handle {
    Session* session = nullptr;
};

struct Parameter {
    SQLSMALLINT type = 0;
    SQLPOINTER data = nullptr;
    SQLLEN room = 0;
    SQLLEN* length = nullptr;
};

struct BoundColumn {
    SQLSMALLINT type = 0;
    char* data = nullptr;
    SQLLEN room = 0;
    SQLLEN* length = nullptr;
};

struct StatementHandle : Handle {
    ConnectionHandle* connection = nullptr;
    std::string text;  ///< of SQLPrepare, or of a call that is still at work
    Answer answer;
    std::size_t row = 0;  ///< one behind the current
    int polls = -1;       ///< left of an asynchronous call; -1: none runs
    bool asynchronous = false;
    std::vector<Parameter> parameters;
    std::vector<BoundColumn> bound;
    SQLULEN sets = 1;                   ///< of parameters, one behind the other in each place
    SQLUSMALLINT* setStates = nullptr;  ///< one a set
    SQLULEN rowsAtOnce = 1;
    SQLULEN* rowsFetched = nullptr;
    SQLUSMALLINT* rowStatus = nullptr;
    std::size_t asked = 0;  ///< the parameter whose contents SQLParamData asked for
    std::string streamed;   ///< of that parameter
    ScriptedRow given;      ///< the parameters' contents so far
    SQLUSMALLINT readColumn = 0;
    std::size_t readBytes = 0;  ///< of that column, by SQLGetData
};

template <typename Kind>
Kind& as(SQLHANDLE handle) {
    return static_cast<Kind&>(*static_cast<Handle*>(handle));
}

/// The call's result by the answer; its diagnostics go to the handle.
SQLRETURN resultOf(Handle& handle, const Answer& answer);
/// What a call was given, with ODBC's length.
std::string textOf(const SQLCHAR* text, SQLLEN length);
/// Writes a text with the length that it has, as ODBC's calls do.
void putText(const std::string& text, SQLCHAR* buffer, SQLSMALLINT room, SQLSMALLINT* length);

/// Runs the statement's text; asynchronous calls come back to it.
SQLRETURN execute(StatementHandle& statement);
/// The next row of the current result: into the bound columns, one or as many as were asked for.
SQLRETURN fetch(StatementHandle& statement);
/// The cell in the form that was asked for, from `offset` on; moves `offset`.
SQLRETURN putCell(const std::optional<std::string>& cell, SQLSMALLINT type, SQLPOINTER buffer, SQLLEN room,
                  SQLLEN* length, std::size_t& offset);

}  // namespace orvenmod::test
