// Idle sessions of the process. See store/handlepool.h.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "store/postgres/session.h"

namespace orvenmod::store::postgres {

/// An idle session of the connection string that the server has not ended meanwhile, or a new one; `paint` is called
/// while that is made. Throws Failure, and what `paint` throws.
std::unique_ptr<Session> takeSession(const std::string& connectionString, const std::function<void()>& paint = {});

/// Gives a session back.
void giveSessionBack(const std::string& connectionString, std::unique_ptr<Session> session) noexcept;

/// Closes every idle session.
void dropIdleSessions();

}  // namespace orvenmod::store::postgres
