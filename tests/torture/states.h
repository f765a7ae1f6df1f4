// What a command may leave: the database as before it or as after it.
#pragma once

#include <string>

#include "torture/desk.h"

namespace orvenmod::test {

/// Everything that the database holds but its counters, which a command that failed may have moved; "" for none.
std::string stateOf(const std::string& database);

/// The bytes of a file, "" for none.
std::string contentsOf(const std::string& path);

/// The first line in which they differ.
std::string difference(const std::string& one, const std::string& other);

/// Whether every page, index and row is whole.
bool isSound(const std::string& database);

/// With what the engine keeps beside it. No handle may be open.
void removeDatabase(const std::string& database);

/// Whether a failure was told, after which the clerk went on in a window that may not have been filled.
bool stumbled(const Desk& desk);

}  // namespace orvenmod::test
