// The memory of a program of its own: what operator new gave, and what the embedded engine took for itself. It is
// counted, and an allocation can be refused.
#pragma once

#include <cstdint>

namespace orvenmod::test {

/// Watches the engine's too; before its first use.
void watchEngineMemory();

/// Asked before each allocation; true where it is to fail. Null for none.
void refuseMemory(bool (*refuses)() noexcept);

/// Blocks that are held now.
std::int64_t heldBlocks();
std::int64_t heldBytes();
/// The most that was held since forgetMost().
std::int64_t mostHeldBytes();
void forgetMost();

}  // namespace orvenmod::test
