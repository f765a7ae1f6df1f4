// The most memory that some work takes.
#pragma once

#include <functional>

namespace orvenmod::bench {

/// In MiB, beyond what the process holds before. Done in a child process, so that nothing of it stays. Throws
/// std::runtime_error where the work fails.
double peakMebibytes(const std::function<void()>& work);

}  // namespace orvenmod::bench
