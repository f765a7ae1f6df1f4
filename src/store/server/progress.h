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

    /// While it lives the work runs to its end: windows paint, and what the callback throws is dropped. For what ends a
    /// transaction, since nobody would know what has become of one whose end was ended.
    class Unstoppable {
    public:
        explicit Unstoppable(Progress& progress)
            : progress_(progress), before_(std::exchange(progress.stoppable_, false)) {}
        ~Unstoppable() { progress_.stoppable_ = before_; }
        Unstoppable(const Unstoppable&) = delete;
        Unstoppable& operator=(const Unstoppable&) = delete;

    private:
        Progress& progress_;
        bool before_;
    };

private:
    void reportAfter(std::chrono::milliseconds pause);
    void callBack() const;

    Now now_;
    std::function<void()> callback_;
    Clock::time_point last_;
    bool stoppable_ = true;
};

}  // namespace orvenmod::store::server
