// Connects within a time.
//
// A driver keeps its own limit where it can, but looks a name up, or a named instance, for as long as it likes. So it
// connects on a thread, which is left to itself when the time is over: what it reaches afterwards it lets go of.
#pragma once

#include <chrono>
#include <memory>

#include "store/odbc/odbchandle.h"
#include "store/odbc/serverstring.h"
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

/// A limit of 0 is none. Throws Failure of kind connection.
std::shared_ptr<ConnectedHandles> connectWithin(std::chrono::seconds limit, const ServerString& string,
                                                tsql::Language language);

}  // namespace orvenmod::store::odbc
