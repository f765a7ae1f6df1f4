// Clerks who work at once: each a process of its own, with the windows of a clerk and nobody at the screen.
#pragma once

#include <string>
#include <vector>

#include "report.h"

namespace orvenmod::bench {

inline constexpr int kClerks = 16;

/// So many clerks search, open and save for so long on one server, which waits for its disk: their throughput, what
/// they waited, and what was refused.
void measureClerks(Report& report, const std::string& folder, int goods, int seconds);

/// The process of one clerk: CONNECTION NUMBER START SECONDS. Writes what each command took, and each refusal.
int workAsClerk(const std::vector<std::string>& arguments);

}  // namespace orvenmod::bench
