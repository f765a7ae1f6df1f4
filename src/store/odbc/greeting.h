// The first statements of a new connection: its settings, and a look whether Chinese letters survive the way there and
// back.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "store/odbc/odbchandle.h"
#include "store/odbc/serverstring.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

/// Owns what it needs, since it may run on after its caller has given it up.
class Greeting {
public:
    Greeting(ServerString string, std::optional<std::chrono::milliseconds> busyTimeout, tsql::Language language);

    /// Throws Failure.
    void operator()(const OdbcHandle& connection) const;

private:
    void run(const OdbcHandle& connection, const std::string& sql) const;
    void checkLetters(const OdbcHandle& connection) const;

    ServerString string_;
    std::optional<std::chrono::milliseconds> busyTimeout_;
    tsql::Language language_;
};

}  // namespace orvenmod::store::odbc
