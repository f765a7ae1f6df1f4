#include "torture/failingmemory.h"

#include <execinfo.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <map>
#include <mutex>
#include <string_view>
#include <utility>

#include "support/watchedmemory.h"

namespace {

using orvenmod::test::MemoryTrouble;

MemoryTrouble trouble;
// An export packs its workbook on a thread of its own.
std::atomic<std::int64_t> count{0};
std::atomic<int> paused{1};
std::atomic<bool> failed{false};

// The engine alone goes through twenty calls for a cell.
constexpr int kMostCalls = 64;
using Calls = std::array<void*, kMostCalls>;

struct Place {
    std::int64_t first = 0;
    std::int64_t last = 0;
};
std::map<std::pair<std::size_t, int>, Place> places;
std::mutex placesAreNoted;
thread_local bool noting = false;

void note(std::int64_t number) {
    noting = true;
    Calls calls;
    const int depth = ::backtrace(calls.data(), kMostCalls);
    const std::string_view bytes(reinterpret_cast<const char*>(calls.data()),
                                 static_cast<std::size_t>(depth) * sizeof(void*));
    {
        const std::lock_guard lock(placesAreNoted);
        Place& place = places[{std::hash<std::string_view>{}(bytes), depth}];
        if (place.first == 0) place.first = number;
        place.last = number;
    }
    noting = false;
}

bool fails() noexcept {
    if (paused > 0 || noting) return false;
    const std::int64_t number = ++count;
    if (trouble.kind == MemoryTrouble::Kind::noted) note(number);
    const bool due = (trouble.kind == MemoryTrouble::Kind::once && number == trouble.at) ||
                     (trouble.kind == MemoryTrouble::Kind::lasting && number >= trouble.at);
    if (due) failed = true;
    return due;
}

}  // namespace

// Nobody pulls the plug here, and thousands of small databases needn't reach a disk.
extern "C" __attribute__((visibility("default"))) int fdatasync(int) { return 0; }

namespace orvenmod::test {

void prepareToFail() {
    watchEngineMemory();
    // Its small blocks would be taken from a store that it has already.
    sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0);
    refuseMemory(fails);
}

void beginMemory(const MemoryTrouble& ahead) {
    trouble = ahead;
    if (ahead.kind == MemoryTrouble::Kind::noted) places.clear();
    count = 0;
    failed = false;
    paused = 0;
}

std::int64_t endMemory() {
    paused = 1;
    trouble = {};
    return count;
}

std::vector<int> memoryPlaces() {
    std::vector<int> all;
    for (const auto& [calls, place] : places) {
        all.push_back(static_cast<int>(place.first));
        if (place.last != place.first) all.push_back(static_cast<int>(place.last));
    }
    std::ranges::sort(all);
    return all;
}

bool memoryFailed() { return failed; }

void pauseMemory(bool entering) { paused += entering ? 1 : -1; }

}  // namespace orvenmod::test
