#include "editor/countedmemory.h"

#include <malloc.h>
#include <sqlite3.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace {

std::atomic<std::int64_t> held{0};
std::atomic<std::int64_t> most{0};

void count(std::int64_t bytes) noexcept {
    const std::int64_t now = held.fetch_add(bytes) + bytes;
    std::int64_t before = most.load();
    while (now > before && !most.compare_exchange_weak(before, now)) {
    }
}

void* allocate(std::size_t size) noexcept {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) count(static_cast<std::int64_t>(::malloc_usable_size(memory)));
    return memory;
}

void release(void* memory) noexcept {
    if (memory == nullptr) return;
    count(-static_cast<std::int64_t>(::malloc_usable_size(memory)));
    std::free(memory);
}

void* allocateOrThrow(std::size_t size) {
    void* memory = allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

sqlite3_mem_methods original;

void* sqliteAllocate(int size) {
    void* memory = original.xMalloc(size);
    if (memory != nullptr) count(original.xSize(memory));
    return memory;
}

void sqliteRelease(void* memory) {
    if (memory != nullptr) count(-original.xSize(memory));
    original.xFree(memory);
}

// While a block grows both may be there, so the new one counts before the old one goes.
void* sqliteReallocate(void* memory, int size) {
    const int before = memory == nullptr ? 0 : original.xSize(memory);
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

void countSqlite() {
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &original);
    sqlite3_mem_methods counting = original;
    counting.xMalloc = sqliteAllocate;
    counting.xFree = sqliteRelease;
    counting.xRealloc = sqliteReallocate;
    if (sqlite3_config(SQLITE_CONFIG_MALLOC, &counting) != SQLITE_OK) {
        throw std::logic_error("SQLite is in use already");
    }
}

std::int64_t heldBytes() { return held.load(); }
std::int64_t mostHeldBytes() { return most.load(); }
void forgetMost() { most.store(held.load()); }

}  // namespace orvenmod::test
