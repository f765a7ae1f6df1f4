// How long a window on the Qt toolkit takes from its call to its first paint.
#pragma once

#include <functional>
#include <string>

#include "report.h"

namespace orvenmod::bench {

struct FirstPaint {
    std::string name;
    std::string boundName;
    double bound;  ///< milliseconds
    int runs;
    std::function<void()> prepare;  ///< before each run, not measured
    std::function<void()> show;     ///< the modal call; the window is closed as soon as it is painted
};

/// Reports the least of the runs against the bound, and what the clock on the wall said.
void measureFirstPaint(Report& report, const FirstPaint& window);

}  // namespace orvenmod::bench
