// The keys of a connection string that every server store reads alike.
#pragma once

#include <string>

#include "store/connectionstring.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::server {

struct ServerKeys {
    tsql::Language language = tsql::Language::chinese;
    int connectTimeout = 15;  ///< seconds
    int busyTimeout = 5000;   ///< milliseconds that a lock is waited for

    /// Reads Language, Connect Timeout, Busy Timeout. Throws Failure kBadConnectionString for what is no number.
    static ServerKeys parse(const ConnectionString& parts);
};

/// Throws Failure kBadConnectionString, which tells the reason in its language.
[[noreturn]] void refuseString(tsql::Language language, const std::string& chinese, const std::string& english);

}  // namespace orvenmod::store::server
