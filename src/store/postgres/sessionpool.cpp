#include "store/postgres/sessionpool.h"

#include <chrono>
#include <cstdlib>

#include "store/handlepool.h"

namespace orvenmod::store::postgres {

namespace {

// Each holds a process of the server with all that it has prepared.
constexpr std::chrono::minutes kLongestIdle{10};

HandlePool<Session>& pool() {
    static HandlePool<Session> instance({.longest = kLongestIdle});
    return instance;
}

// Encrypted sessions must end before the library that encrypts does, which puts its own end on the list with the first
// of them; so theirs goes on the list behind it.
void endBeforeTheLibrary(const Session& session) {
    if (PQsslInUse(session.native()) == 0) return;
    static const int kRegistered = std::atexit(dropIdleSessions);
    static_cast<void>(kRegistered);
}

}  // namespace

std::unique_ptr<Session> takeSession(const std::string& connectionString, const std::function<void()>& paint) {
    if (auto session = pool().take(connectionString)) return session;
    auto session = std::make_unique<Session>(ServerAddress::parse(connectionString), paint);
    endBeforeTheLibrary(*session);
    return session;
}

void giveSessionBack(const std::string& connectionString, std::unique_ptr<Session> session) noexcept {
    pool().put(connectionString, std::move(session));
}

void dropIdleSessions() { pool().drop(); }

}  // namespace orvenmod::store::postgres
