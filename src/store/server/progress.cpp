#include "store/server/progress.h"

#include <algorithm>

namespace orvenmod::store::server {

namespace {

constexpr std::chrono::milliseconds kEvery{100};
constexpr std::chrono::milliseconds kJust{20};

}  // namespace

std::chrono::milliseconds Progress::untilNext() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(last_ + kEvery - now_());
    return std::clamp(left, std::chrono::milliseconds(0), kEvery);
}

void Progress::report() { reportAfter(kEvery); }
void Progress::reportBeforeWork() { reportAfter(kJust); }

void Progress::reportAfter(std::chrono::milliseconds pause) {
    if (!callback_ || now_() - last_ < pause) return;
    callBack();
    // Only now: a callback that paints for long must not be called again at once.
    last_ = now_();
}

void Progress::callBack() const {
    try {
        callback_();
    } catch (...) {
        if (stoppable_) throw;
    }
}

}  // namespace orvenmod::store::server
