// Calls back about ten times a second while a server works, so that windows can paint. Used by every server store.
#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace orvenmod::store::server {

class Progress {
public:
    using Clock = std::chrono::steady_clock;
    using Now = Clock::time_point (*)();

    explicit Progress(Now now = Clock::now) : now_(now) {}

    /// Empty for none.
    void set(std::function<void()> callback) { callback_ = std::move(callback); }
    explicit operator bool() const { return static_cast<bool>(callback_); }

    /// A statement begins: the first call comes a tenth of a second from now.
    void start() { last_ = now_(); }

    /// How long may be waited until the next report() has something to do; 0 where it has now.
    std::chrono::milliseconds untilNext() const;

    /// Calls back where it is time. What the callback throws passes on: the statement is to be ended then.
    void report();

    /// Calls back unless it just has: what comes next takes a while and can't be interrupted.
    void reportBeforeWork();

private:
    void reportAfter(std::chrono::milliseconds pause);

    Now now_;
    std::function<void()> callback_;
    Clock::time_point last_;
};

}  // namespace orvenmod::store::server
