// Where a server listens, as OLE DB writes it: "tcp:host\instance,port".
#pragma once

#include <string>

#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

struct ServerAddress {
    std::string host;
    std::string instance;  ///< "" where a port is told, which overrules it
    std::string port;      ///< "" where only the instance is told

    /// "." and "(local)" are this machine. Throws Failure kBadConnectionString for another network than TCP and for a
    /// port that is none.
    static ServerAddress parse(const std::string& server, const std::string& port, tsql::Language language);
};

}  // namespace orvenmod::store::odbc
