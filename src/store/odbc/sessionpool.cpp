#include "store/odbc/sessionpool.h"

#include <chrono>

#include "store/handlepool.h"

namespace orvenmod::store::odbc {

namespace {

// A server keeps memory for each session, and firewalls forget the quiet ones.
constexpr std::chrono::minutes kLongestIdle{4};

HandlePool<OdbcSession>& pool() {
    static HandlePool<OdbcSession> instance({.longest = kLongestIdle});
    return instance;
}

}  // namespace

std::unique_ptr<OdbcSession> takeSession(const std::string& connectionString, const OdbcSession::Paint& paint) {
    if (auto idle = pool().take(connectionString)) return idle;
    return std::make_unique<OdbcSession>(connectionString, paint);
}

void giveSessionBack(const std::string& connectionString, std::unique_ptr<OdbcSession> session) noexcept {
    pool().put(connectionString, std::move(session));
}

void dropIdleSessions() { pool().drop(); }

std::size_t idleSessions() { return pool().size(); }

}  // namespace orvenmod::store::odbc
