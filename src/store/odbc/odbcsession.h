// A session on a server: the driver's handles, connected by the string, and ready for statements. It can outlive the
// connection that uses it.
#pragma once

#include <memory>
#include <string>

#include "store/odbc/knowncharacters.h"
#include "store/odbc/odbchandle.h"
#include "store/odbc/odbcwaiter.h"
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

    OdbcWaiter& waiter() { return *waiter_; }
    KnownCharacters& characters() { return characters_; }
    /// What it has done must not reach its next user, or it is broken: it won't wait for one.
    void spoil() { spoilt_ = true; }
    bool spoilt() const { return spoilt_; }

    // For the pool.

    /// Whether the server still answers.
    bool alive();
    bool reset() noexcept { return !spoilt_; }

private:
    tsql::Language language_ = tsql::Language::chinese;
    std::string server_;
    OdbcHandle environment_;
    OdbcHandle connection_;
    bool connected_ = false;
    bool spoilt_ = false;
    std::unique_ptr<OdbcWaiter> waiter_;
    KnownCharacters characters_;
};

}  // namespace orvenmod::store::odbc
