// Idle handles of the process, so that a use that opens, works and closes finds its statements prepared. An idle handle
// has no transaction and holds no lock. Safe from every thread; a handle belongs to one thread at a time.
// See store/handlepool.h.
#pragma once

#include <memory>
#include <string>

#include "store/sqlite/database.h"

namespace orvenmod::store::sqlite {

/// An idle handle of the connection string whose file still is the one that stands at the path, or a new one.
/// Throws Failure.
std::unique_ptr<Database> takeHandle(const std::string& connectionString);

/// Gives a handle back. Beyond a few idle ones the oldest is closed.
void giveHandleBack(const std::string& connectionString, std::unique_ptr<Database> database) noexcept;

/// Closes every idle handle.
void dropIdleHandles();

}  // namespace orvenmod::store::sqlite
