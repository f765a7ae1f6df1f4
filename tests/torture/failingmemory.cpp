#include "torture/failingmemory.h"

#include <sqlite3.h>

#include <atomic>

#include "support/watchedmemory.h"

namespace {

using orvenmod::test::MemoryTrouble;

MemoryTrouble trouble;
// An export packs its workbook on a thread of its own.
std::atomic<std::int64_t> count{0};
std::atomic<int> paused{1};
std::atomic<bool> failed{false};

bool fails() noexcept {
    if (paused > 0) return false;
    const std::int64_t number = ++count;
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
    count = 0;
    failed = false;
    paused = 0;
}

std::int64_t endMemory() {
    paused = 1;
    trouble = {};
    return count;
}

bool memoryFailed() { return failed; }

void pauseMemory(bool entering) { paused += entering ? 1 : -1; }

}  // namespace orvenmod::test
