#include "store/server/socketwait.h"

#include <poll.h>

#include <algorithm>

namespace orvenmod::store::server {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kLongestWait{60'000};

short eventsOf(Awaited awaited) {
    switch (awaited) {
        case Awaited::readable:
            return POLLIN;
        case Awaited::writable:
            return POLLOUT;
        case Awaited::either:
            break;
    }
    return POLLIN | POLLOUT;
}

}  // namespace

bool awaitSocket(int socket, Awaited awaited, Progress& progress, milliseconds limit) {
    const auto start = Clock::now();
    for (;;) {
        const auto left = limit - std::chrono::duration_cast<milliseconds>(Clock::now() - start);
        milliseconds wait = std::clamp(left, milliseconds(0), kLongestWait);
        if (progress) wait = std::min(wait, progress.untilNext());
        pollfd entry{socket, eventsOf(awaited), 0};
        if (::poll(&entry, 1, static_cast<int>(wait.count())) > 0) return true;
        if (left <= milliseconds(0)) return false;
        progress.report();
    }
}

}  // namespace orvenmod::store::server
