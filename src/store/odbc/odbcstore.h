// Server databases over unixODBC. The statements go out untouched: the server speaks the dialect itself.
#pragma once

#include "store/connection.h"

namespace orvenmod::store::odbc {

class OdbcStore : public Store {
public:
    /// "Driver=..." or "DSN=..." as unixODBC takes it, or an OLE DB string.
    std::unique_ptr<Connection> connect(const std::string& connectionString) override;
};

}  // namespace orvenmod::store::odbc
