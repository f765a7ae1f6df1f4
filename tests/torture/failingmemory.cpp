#include "torture/failingmemory.h"

#include <sqlite3.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace {

using orvenmod::test::MemoryTrouble;

std::atomic<std::int64_t> held{0};
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

void* allocate(std::size_t size) noexcept {
    if (fails()) return nullptr;
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) ++held;
    return memory;
}

void release(void* memory) noexcept {
    if (memory == nullptr) return;
    --held;
    std::free(memory);
}

void* allocateOrThrow(std::size_t size) {
    void* memory = allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

sqlite3_mem_methods original;

void* engineAllocate(int size) {
    if (fails()) return nullptr;
    void* memory = original.xMalloc(size);
    if (memory != nullptr) ++held;
    return memory;
}

void engineRelease(void* memory) {
    if (memory != nullptr) --held;
    original.xFree(memory);
}

void* engineReallocate(void* memory, int size) { return fails() ? nullptr : original.xRealloc(memory, size); }

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { release(memory); }

// Nobody pulls the plug here, and thousands of small databases needn't reach a disk.
extern "C" __attribute__((visibility("default"))) int fdatasync(int) { return 0; }

namespace orvenmod::test {

void watchEngineMemory() {
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &original);
    sqlite3_mem_methods failing = original;
    failing.xMalloc = engineAllocate;
    failing.xFree = engineRelease;
    failing.xRealloc = engineReallocate;
    // Its small blocks would be taken from a store that it has already.
    sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0);
    if (sqlite3_config(SQLITE_CONFIG_MALLOC, &failing) != SQLITE_OK) throw std::logic_error("SQLite is in use already");
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

std::int64_t blocksHeld() { return held; }

}  // namespace orvenmod::test
