// The server and database behind a connection string.
//
//   Provider=PostgreSQL;Data Source=db1,db2;Port=5432;Initial Catalog=suite;User ID=li;Password=...;sslmode=verify-full
//
//   host      db1,db2          a host that begins with '/' is the folder of a socket
//   port      5432
//   dbname    suite
//   user      li
//   sslmode   verify-full      keys that are none of the store's own go to the client library as they are
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "store/tsql/stringparts.h"

namespace orvenmod::store::postgres {

struct ServerAddress {
    tsql::Language language = tsql::Language::chinese;
    std::chrono::seconds connectTimeout{};  ///< 0 for none
    std::chrono::milliseconds busyTimeout{};
    std::string server;                                           ///< the hosts, for texts
    std::string database;                                         ///< for texts
    std::string user;                                             ///< for texts
    std::vector<std::pair<std::string, std::string>> parameters;  ///< of the client library

    /// Throws Failure kBadConnectionString.
    static ServerAddress parse(const std::string& connectionString);
};

}  // namespace orvenmod::store::postgres
