// Idle sessions of the process: a login costs a server, and the clerk, a hundred times what a statement does.
#pragma once

#include <memory>
#include <string>

#include "store/odbc/odbcsession.h"

namespace orvenmod::store::odbc {

/// An idle session of the connection string, which may have died meanwhile, or a new one. Throws Failure.
std::unique_ptr<OdbcSession> takeSession(const std::string& connectionString, const OdbcSession::Paint& paint = {});
void giveSessionBack(const std::string& connectionString, std::unique_ptr<OdbcSession> session) noexcept;
/// Closes every idle session.
void dropIdleSessions();
std::size_t idleSessions();

}  // namespace orvenmod::store::odbc
