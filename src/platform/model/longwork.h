// Work over all rows of a list, which may have to fetch each: it tells how far it is, and whoever waits may cancel it.
// By then it has changed nothing.
#pragma once

#include <cstddef>
#include <functional>

#include "platform/progress.h"

namespace orvenmod::platform::model {

/// Told how many rows are done. What it throws ends the work.
using RowsDone = std::function<void(std::size_t rows)>;

inline constexpr std::size_t kRowsAStep = 256;

inline void tellStep(const RowsDone& done, std::size_t rows) {
    if (done && rows % kRowsAStep == kRowsAStep - 1) done(rows);
}

struct WorkCancelled {};

/// Does the work, which is given its RowsDone. False where it was cancelled.
template <class Work>
bool doneUnder(Progress& progress, Work work) {
    try {
        work([&progress](std::size_t rows) {
            if (!progress.advance(static_cast<int>(rows))) throw WorkCancelled();
        });
        return true;
    } catch (const WorkCancelled&) {
        return false;
    }
}

// What the display tells.
inline constexpr const char* kCopying = "正在复制，请稍候…";
inline constexpr const char* kReadyingNarrowing = "正在准备筛选，请稍候…";
inline constexpr const char* kSorting = "正在排序，请稍候…";

}  // namespace orvenmod::platform::model
