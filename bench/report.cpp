#include "report.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>

namespace orvenmod::bench {

namespace {

double milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

}  // namespace

double threadMilliseconds() { return milliseconds(CLOCK_THREAD_CPUTIME_ID); }

double processMilliseconds() { return milliseconds(CLOCK_PROCESS_CPUTIME_ID); }

double wallMilliseconds() { return milliseconds(CLOCK_MONOTONIC); }

double leastOf(int runs, const std::function<void()>& work, const Clock& clock) {
    double least = std::numeric_limits<double>::max();
    for (int run = 0; run < runs; ++run) {
        const double begin = clock();
        work();
        least = std::min(least, clock() - begin);
    }
    return least;
}

void Report::heading(const std::string& text) {
    std::printf("\n%s\n", text.c_str());
    std::fflush(stdout);
}

void Report::ratio(const std::string& name, double ours, const std::string& boundName, double bound, double most,
                   const std::string& unit) {
    const double ratio = ours / bound;
    const bool kept = ratio <= most;
    kept_ = kept_ && kept;
    std::printf("  %-34s %10.2f %-3s %-26s %10.2f %-3s ratio %5.2f, at most %4.2f  %s\n", name.c_str(), ours,
                unit.c_str(), boundName.c_str(), bound, unit.c_str(), ratio, most, kept ? "kept" : "NOT KEPT");
    std::fflush(stdout);
}

void Report::note(const std::string& text) {
    std::printf("  %s\n", text.c_str());
    std::fflush(stdout);
}

}  // namespace orvenmod::bench
