// The most memory that some work takes.
#pragma once

#include <functional>

namespace orvenmod::bench {

/// In MiB, beyond what the process holds before.
double mostMemory(const std::function<void()>& work);

}  // namespace orvenmod::bench
