// Picks the store by the connection string:
//
//   Provider=SQLite;Data Source=...                                    the embedded store
//   Provider=PostgreSQL;Data Source=host;Initial Catalog=...;
//     User ID=...;Password=...                                         a PostgreSQL server
//   Driver=...;... or DSN=...;...                                      a server over ODBC
//   Provider=SQLOLEDB...;Data Source=...;Initial Catalog=...;
//     User ID=...;Password=...                                         likewise, as hosts have it today
//   Provider=MSDASQL;Extended Properties="Driver=...;..."              likewise, with a string of ODBC within
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "store/connection.h"

namespace orvenmod {

class StoreFactory : public store::Store {
public:
    /// `paint` is called about ten times a second while a server is connected to.
    explicit StoreFactory(std::function<void()> paint = {});
    ~StoreFactory() override;

    /// Throws Failure kBadConnectionString for a string that names no store.
    std::unique_ptr<store::Connection> connect(const std::string& connectionString) override;

private:
    std::unique_ptr<store::Store> embedded_;
    std::unique_ptr<store::Store> postgres_;
    std::unique_ptr<store::Store> server_;
};

}  // namespace orvenmod
