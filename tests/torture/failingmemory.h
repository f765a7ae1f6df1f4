// Allocations of this program that fail on demand: what operator new is asked for, and what the embedded engine takes
// for itself, in the order in which they come.
#pragma once

#include <cstdint>
#include <vector>

namespace orvenmod::test {

/// Before the first use of the engine, whose own allocations fail as well.
void prepareToFail();

struct MemoryTrouble {
    enum class Kind { none, once, lasting, noted };  ///< `noted`: none fails, and each one's calls are kept
    Kind kind = Kind::none;
    std::int64_t at = 0;  ///< from 1
};

/// Counts from 0 again, with that trouble ahead.
void beginMemory(const MemoryTrouble& trouble);
/// Allocations since then; from now on none fails and none is counted.
std::int64_t endMemory();
bool memoryFailed();

/// Of the allocations that were noted the first and the last of each place in the program, in order. A place is the
/// calls that led there: a loop's thousand rounds are one.
std::vector<int> memoryPlaces();

/// Nothing fails and nothing counts between the two; they nest.
void pauseMemory(bool entering);

}  // namespace orvenmod::test
