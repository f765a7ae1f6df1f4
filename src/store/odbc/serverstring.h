// The connection string of a server as unixODBC and the driver take it.
//
//   Data Source=store1;Initial Catalog=suite;User ID=clerk    the host's
//   Driver=FreeTDS;...;Database=suite;UID=clerk;...         ServerString::text
#pragma once

#include <string>
#include <vector>

#include "store/odbc/drivers.h"

namespace orvenmod::store::odbc {

/// How one server is reached.
struct ServerString {
    std::string text;      ///< for the driver manager
    std::string server;    ///< as the string names it, for texts
    std::string database;  ///< likewise
    std::string user;
    std::string driver;
    DriverKind kind = DriverKind::other;
    bool encrypted = false;     ///< no connection rather than one in clear text
    bool integrated = false;    ///< the login of the operating system
    std::string settings;       ///< what FreeTDS takes from its file alone, "" for nothing
    std::string laterDatabase;  ///< the database where the driver can't carry its name to the login
    unsigned packetSize = 0;    ///< for a driver that has no key for it; 0 for its own
};

/// The ways to the server, in the order in which they are tried: one, or the failover partner as well.
///
/// The driver is the one that the string names by `Driver` or `DSN`, else the best that is installed. What it asks for
/// is written with the driver's own keys; a driver that is not known gets its string word for word. Throws Failure of
/// kind connection where the driver is missing or can't do what the string asks for.
std::vector<ServerString> serverStrings(const std::string& connectionString, const Drivers& drivers);

/// Likewise, with the drivers of this machine.
std::vector<ServerString> serverStrings(const std::string& connectionString);

}  // namespace orvenmod::store::odbc
