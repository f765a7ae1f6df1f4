#include "store/odbc/odbcstore.h"

#include "store/odbc/odbcconnection.h"

namespace orvenmod::store::odbc {

std::unique_ptr<Connection> OdbcStore::connect(const std::string& connectionString) {
    return std::make_unique<OdbcConnection>(connectionString, paint_);
}

}  // namespace orvenmod::store::odbc
