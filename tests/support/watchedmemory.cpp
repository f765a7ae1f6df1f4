#include "support/watchedmemory.h"

#include <malloc.h>
#include <sqlite3.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace {

std::atomic<std::int64_t> blocks{0};
std::atomic<std::int64_t> held{0};
std::atomic<std::int64_t> most{0};
std::atomic<bool (*)() noexcept> refusing{nullptr};

bool refused() noexcept {
    bool (*const refuses)() noexcept = refusing.load();
    return refuses != nullptr && refuses();
}

void count(std::int64_t bytes) noexcept {
    const std::int64_t now = held.fetch_add(bytes) + bytes;
    std::int64_t before = most.load();
    while (now > before && !most.compare_exchange_weak(before, now)) {
    }
}

void countBlock(std::int64_t bytes) noexcept {
    blocks.fetch_add(bytes < 0 ? -1 : 1);
    count(bytes);
}

void* allocate(std::size_t size) noexcept {
    void* memory = refused() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) countBlock(static_cast<std::int64_t>(::malloc_usable_size(memory)));
    return memory;
}

void release(void* memory) noexcept {
    if (memory == nullptr) return;
    countBlock(-static_cast<std::int64_t>(::malloc_usable_size(memory)));
    std::free(memory);
}

void* allocateOrThrow(std::size_t size) {
    void* memory = allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

sqlite3_mem_methods original;

void* engineAllocate(int size) {
    void* memory = refused() ? nullptr : original.xMalloc(size);
    if (memory != nullptr) countBlock(original.xSize(memory));
    return memory;
}

void engineRelease(void* memory) {
    if (memory != nullptr) countBlock(-original.xSize(memory));
    original.xFree(memory);
}

// While a block grows both may be there, so the new one counts before the old one goes.
void* engineReallocate(void* memory, int size) {
    if (refused()) return nullptr;
    const int before = original.xSize(memory);
    count(size);
    void* larger = original.xRealloc(memory, size);
    count(-size);
    if (larger != nullptr) count(original.xSize(larger) - before);
    return larger;
}

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

namespace orvenmod::test {

void watchEngineMemory() {
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &original);
    sqlite3_mem_methods watched = original;
    watched.xMalloc = engineAllocate;
    watched.xFree = engineRelease;
    watched.xRealloc = engineReallocate;
    if (sqlite3_config(SQLITE_CONFIG_MALLOC, &watched) != SQLITE_OK) throw std::logic_error("SQLite is in use already");
}

void refuseMemory(bool (*refuses)() noexcept) { refusing = refuses; }

std::int64_t heldBlocks() { return blocks.load(); }
std::int64_t heldBytes() { return held.load(); }
std::int64_t mostHeldBytes() { return most.load(); }
void forgetMost() { most.store(held.load()); }

}  // namespace orvenmod::test
