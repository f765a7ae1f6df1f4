// Idle handles of the process, so that a use that opens, works and closes finds what an earlier one has learnt. Safe
// from every thread; a handle belongs to one thread at a time.
//
// Every command of the system opens the store and closes it. Were each to begin anew, it would reach for the server or
// the file, read the schema and prepare its statements again. So closing puts the handle aside, with all that it knows:
//
//   take A     none of A idle: the caller makes one
//   put A      the handle is reset, and waits
//   take A     the same handle, unless it has died meanwhile
//
// A handle is found by the whole connection string, since all its parts (read-only, language) belong to it.
//
// A Handle has `bool alive()`, asked before it is handed out, and `bool reset() noexcept`, called when it comes back;
// one that answers no is closed. Its destructor closes it.
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace orvenmod::store {

template <typename Handle>
class HandlePool {
public:
    using Clock = std::chrono::steady_clock;
    using Now = Clock::time_point (*)();

    struct Limits {
        std::size_t most = 8;                              ///< idle ones; beyond them the oldest is closed
        Clock::duration longest = Clock::duration::max();  ///< that one may be idle; seen to whenever the pool is used
    };

    HandlePool() = default;
    explicit HandlePool(Limits limits, Now now = Clock::now) : limits_(limits), now_(now) {}
    // A handle must not be used on the other side of a fork, and not even be closed there: that would drop the parent's
    // locks, or end its session.
    ~HandlePool() {
        if (process_ != ::getpid()) abandon();
    }
    HandlePool(const HandlePool&) = delete;
    HandlePool& operator=(const HandlePool&) = delete;

    /// The live handle of the key that was used last, or null. What alive() throws passes on, and the handle is closed.
    std::unique_ptr<Handle> take(const std::string& key) {
        while (auto handle = takeAny(key)) {
            if (handle->alive()) return handle;
        }
        return nullptr;
    }

    /// Gives a handle back.
    void put(const std::string& key, std::unique_ptr<Handle> handle) noexcept {
        if (!handle->reset()) return;
        try {
            const Idle closed = keep({key, std::move(handle), now_()});
        } catch (...) {
            // Out of memory: the handle is closed instead of kept.
            return;
        }
    }

    /// Closes every idle handle.
    void drop() {
        Idle closed;
        const std::lock_guard lock(mutex_);
        checkProcess();
        closed.swap(idle_);
    }

    std::size_t size() const {
        const std::lock_guard lock(mutex_);
        return idle_.size();
    }

private:
    struct Entry {
        std::string key;
        std::unique_ptr<Handle> handle;
        Clock::time_point since;
    };
    using Idle = std::list<Entry>;

    std::unique_ptr<Handle> takeAny(const std::string& key) {
        Idle closed;
        const std::lock_guard lock(mutex_);
        checkProcess();
        closed = overdue();
        const auto found =
            std::find_if(idle_.begin(), idle_.end(), [&](const Entry& entry) { return entry.key == key; });
        if (found == idle_.end()) return nullptr;
        auto handle = std::move(found->handle);
        idle_.erase(found);
        return handle;
    }

    // What is to be closed for it; closing may take its time, so that the caller does it without the lock.
    Idle keep(Entry entry) {
        const std::lock_guard lock(mutex_);
        checkProcess();
        Idle closed = overdue();
        idle_.push_front(std::move(entry));
        if (idle_.size() > limits_.most) closed.splice(closed.end(), idle_, std::prev(idle_.end()));
        return closed;
    }

    Idle overdue() {
        const auto now = now_();
        const auto first = std::find_if(idle_.begin(), idle_.end(),
                                        [&](const Entry& entry) { return now - entry.since > limits_.longest; });
        Idle result;
        result.splice(result.end(), idle_, first, idle_.end());
        return result;
    }

    void checkProcess() {
        if (process_ == ::getpid()) return;
        abandon();
        process_ = ::getpid();
    }

    void abandon() {
        for (Entry& entry : idle_)
            static_cast<void>(entry.handle.release());
        idle_.clear();
    }

    Limits limits_;
    Now now_ = Clock::now;
    mutable std::mutex mutex_;
    Idle idle_;  // the last used first
    pid_t process_ = ::getpid();
};

}  // namespace orvenmod::store
