// Waits for what another thread does, while windows paint.
#pragma once

#include <algorithm>
#include <chrono>
#include <future>

#include "store/server/progress.h"

namespace orvenmod::store::server {

/// True when the work has ended, false when `limit` has passed before that; a limit of 0 is none. What the progress
/// throws passes on.
template <typename Result>
bool awaitEnd(const std::future<Result>& end, std::chrono::milliseconds limit, Progress& progress) {
    constexpr std::chrono::milliseconds kLongestWait{60'000};
    const auto start = std::chrono::steady_clock::now();
    progress.start();
    for (;;) {
        auto wait = progress ? progress.untilNext() : kLongestWait;
        if (limit.count() != 0) {
            const auto passed = std::chrono::steady_clock::now() - start;
            if (passed >= limit) return false;
            wait = std::min(wait, std::chrono::ceil<std::chrono::milliseconds>(limit - passed));
        }
        if (end.wait_for(wait) == std::future_status::ready) return true;
        progress.report();
    }
}

}  // namespace orvenmod::store::server
