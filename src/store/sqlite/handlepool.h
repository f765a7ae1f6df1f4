// Idle handles of the process, so that a use that opens, works and closes finds its statements prepared. An idle handle
// has no transaction and holds no lock. Safe from every thread; a handle belongs to one thread at a time.
//
// Every command of the system opens the store and closes it. Were each to open the file, it would register the
// functions, read the schema and translate its statements anew. So closing puts the handle aside, with all that it
// knows:
//
//   connect A       no handle of A idle: the file is opened
//   close           the handle rests: an open transaction is undone, every statement reset
//   connect A       the same handle, unless another file has taken A's place meanwhile
//
// A handle is found by the whole connection string, since its parts (read-only, language) belong to it.
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
