// A session on a server: the driver's handles, connected by the string, and ready for statements. It can outlive the
// connection that uses it.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "store/odbc/connecting.h"
#include "store/odbc/knowncharacters.h"
#include "store/odbc/odbchandle.h"
#include "store/odbc/odbcwaiter.h"
#include "store/odbc/serverstring.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

class OdbcSession {
public:
    using Clock = std::chrono::steady_clock;
    /// Called about ten times a second while a connection is made; none where nothing has to be painted.
    using Paint = std::function<void()>;

    /// Throws Failure of kind connection, also where Chinese letters would be lost on the way or in the database.
    explicit OdbcSession(const std::string& connectionString, const Paint& paint = {});
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;

    const OdbcHandle& connection() const { return handles_->connection; }
    /// Of the store's own texts, by the connection string.
    tsql::Language language() const { return language_; }
    /// The server as the string names it, for texts.
    const std::string& server() const { return string_.server; }
    /// Whether it is a server of the dialect, by its driver.
    bool speaksTheDialect() const { return string_.kind != DriverKind::other; }

    /// How long a statement waits for a row that is locked.
    std::chrono::milliseconds busyTimeout() const { return busyTimeout_.value_or(std::chrono::milliseconds(0)); }

    OdbcWaiter& waiter() { return *waiter_; }
    KnownCharacters& characters() { return characters_; }
    /// What it has done must not reach its next user, or it is broken: it won't wait for one.
    void spoil() { spoilt_ = true; }
    bool spoilt() const { return spoilt_; }

    /// Whether the server has answered since the session was taken from the pool.
    bool isProven() const { return proven_; }
    /// Whether the server has answered lately.
    bool isFresh() const;
    void heard(Clock::time_point when) {
        heard_ = when;
        proven_ = true;
    }

    // For the pool.

    /// Doesn't ask the server: whoever takes the session does, if need be together with its first statement.
    bool alive() {
        proven_ = false;
        return true;
    }
    bool reset() noexcept { return !spoilt_; }

private:
    void connect(const std::string& connectionString, std::chrono::seconds limit, const Paint& paint);

    tsql::Language language_;
    std::optional<std::chrono::milliseconds> busyTimeout_;
    ServerString string_;
    std::shared_ptr<ConnectedHandles> handles_;
    bool spoilt_ = false;
    bool proven_ = false;
    Clock::time_point heard_;
    std::unique_ptr<OdbcWaiter> waiter_;
    KnownCharacters characters_;
};

}  // namespace orvenmod::store::odbc
