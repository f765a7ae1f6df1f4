// Connects within a time, while windows paint.
//
// A driver keeps its own limit where it can, but looks a name up, or a named instance, for as long as it likes, and a
// server that took the login may fall silent at the first statement. So both happen on a thread, which is left to
// itself when the time is over: what it reaches afterwards it lets go of.
#pragma once

#include <chrono>
#include <memory>

#include "store/odbc/greeting.h"
#include "store/odbc/odbchandle.h"
#include "store/odbc/serverstring.h"
#include "store/server/progress.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

/// The handles of a connection; disconnected when they go.
struct ConnectedHandles {
    OdbcHandle environment;
    OdbcHandle connection;
    bool connected = false;

    ConnectedHandles() = default;
    ~ConnectedHandles();
    ConnectedHandles(const ConnectedHandles&) = delete;
    ConnectedHandles& operator=(const ConnectedHandles&) = delete;
};

/// A limit of 0 is none. Throws Failure of kind connection, and what the greeting and the progress throw.
std::shared_ptr<ConnectedHandles> connectWithin(std::chrono::seconds limit, const ServerString& string,
                                                const Greeting& greeting, tsql::Language language,
                                                server::Progress& progress);

}  // namespace orvenmod::store::odbc
