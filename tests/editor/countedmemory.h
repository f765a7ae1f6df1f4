// Counts the memory that this program holds: what operator new gave, and what SQLite took for itself.
#pragma once

#include <cstdint>

namespace orvenmod::test {

/// Counts SQLite's too; before the first use of SQLite.
void countSqlite();

std::int64_t heldBytes();
/// The most that was held since forgetMost().
std::int64_t mostHeldBytes();
void forgetMost();

}  // namespace orvenmod::test
