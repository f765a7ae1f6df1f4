// The server that the variable ORVEN_TDS_SERVER names, by a connection string of a login that may create databases.
#pragma once

#include <memory>
#include <string>

#include "store/connection.h"

namespace orvenmod::test {

/// A database of this process's own on that server, dropped at its end.
class TdsDatabase {
public:
    /// Null, and a reason, where no server is named or it can't be reached.
    static TdsDatabase* get(std::string& reason);
    ~TdsDatabase();
    TdsDatabase(const TdsDatabase&) = delete;
    TdsDatabase& operator=(const TdsDatabase&) = delete;

    const std::string& connectionString() const { return connectionString_; }
    std::unique_ptr<store::Connection> connect() const;
    /// Drops every view and table.
    void clear() const;

private:
    explicit TdsDatabase(std::string server);

    std::string server_;
    std::string name_;
    std::string connectionString_;
};

/// The string with the database replaced.
std::string withDatabase(const std::string& connectionString, const std::string& database);

}  // namespace orvenmod::test
