// A session on a server: the driver's handles, connected by the string, and ready for statements. It can outlive the
// connection that uses it.
#pragma once

#include <string>

#include "store/odbc/odbchandle.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

class OdbcSession {
public:
    /// Throws Failure of kind connection.
    explicit OdbcSession(const std::string& connectionString);
    ~OdbcSession();
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;

    const OdbcHandle& connection() const { return connection_; }
    /// Of the store's own texts, by the connection string.
    tsql::Language language() const { return language_; }
    /// The server as the string names it, for texts.
    const std::string& server() const { return server_; }

private:
    tsql::Language language_ = tsql::Language::chinese;
    std::string server_;
    OdbcHandle environment_;
    OdbcHandle connection_;
    bool connected_ = false;
};

}  // namespace orvenmod::store::odbc
