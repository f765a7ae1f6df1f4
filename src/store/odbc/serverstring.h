// The connection string of a server as unixODBC takes it.
#pragma once

#include <string>

namespace orvenmod::store::odbc {

/// "Driver=..." and "DSN=..." as they are; an OLE DB string ("Provider=SQLOLEDB.1;Data Source=host[\instance][,port];
/// Initial Catalog=...;User ID=...;Password=...") as one for FreeTDS.
std::string serverString(const std::string& connectionString);

}  // namespace orvenmod::store::odbc
