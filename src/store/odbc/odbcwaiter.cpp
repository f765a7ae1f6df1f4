#include "store/odbc/odbcwaiter.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>

namespace orvenmod::store::odbc {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// How long a server has to answer a cancel.
constexpr std::chrono::milliseconds kCancelTime{3000};
// Between two questions whether an asynchronous call is done: at first short ones, since most statements are.
constexpr std::chrono::microseconds kFirstPause{50};
constexpr std::chrono::microseconds kLongestPause{5000};

}  // namespace

// Where caller and thread meet.
struct OdbcWaiter::Desk {
    std::mutex mutex;
    std::condition_variable arrived;
    std::condition_variable finished;
    std::shared_ptr<OdbcWork> work;  // none: nothing to do
    std::exception_ptr failure;
    bool closed = false;

    void serve() {
        std::unique_lock lock(mutex);
        for (;;) {
            arrived.wait(lock, [this] { return work || closed; });
            if (!work) return;
            lock.unlock();
            try {
                work->run();
            } catch (...) {
                failure = std::current_exception();
            }
            lock.lock();
            // Given up: the session that goes with the work is closed here, without anybody waiting.
            auto done = std::move(work);
            work.reset();
            finished.notify_one();
            if (closed) {
                lock.unlock();
                done.reset();
                return;
            }
        }
    }
};

OdbcWaiter::OdbcWaiter(Calls calls) : calls_(calls) {}

OdbcWaiter::~OdbcWaiter() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(desk_->mutex);
        desk_->closed = true;
    }
    desk_->arrived.notify_one();
    thread_.join();
}

void OdbcWaiter::run(const std::shared_ptr<OdbcWork>& work, server::Progress& progress) {
    progress.start();
    if (!progress) {
        work->run();
    } else if (calls_ == Calls::asynchronous) {
        runAsynchronously(*work, progress);
    } else {
        runOnThread(work, progress);
    }
}

void OdbcWaiter::runAsynchronously(OdbcWork& work, server::Progress& progress) {
    const SQLHANDLE statement = work.statement().get();
    SQLSetStmtAttr(statement, SQL_ATTR_ASYNC_ENABLE, reinterpret_cast<SQLPOINTER>(SQL_ASYNC_ENABLE_ON),
                   SQL_IS_UINTEGER);
    std::exception_ptr stop;
    Clock::time_point stopped;
    auto pause = kFirstPause;
    work.setPause([&] {
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, kLongestPause);
        if (stop) {
            gaveUp_ = Clock::now() - stopped > kCancelTime;
            if (gaveUp_) std::rethrow_exception(stop);
            return;
        }
        try {
            progress.report();
        } catch (...) {
            stop = std::current_exception();
            stopped = Clock::now();
            SQLCancel(statement);
        }
    });
    try {
        work.run();
    } catch (...) {
        if (stop) std::rethrow_exception(stop);
        throw;
    }
    if (stop) std::rethrow_exception(stop);
}

void OdbcWaiter::start() {
    desk_ = std::make_shared<Desk>();
    thread_ = std::thread([desk = desk_] { desk->serve(); });
}

void OdbcWaiter::runOnThread(const std::shared_ptr<OdbcWork>& work, server::Progress& progress) {
    if (!thread_.joinable()) start();
    std::unique_lock lock(desk_->mutex);
    desk_->work = work;
    desk_->arrived.notify_one();
    const auto done = [this] { return !desk_->work; };
    std::exception_ptr stop;
    while (!desk_->finished.wait_for(lock, progress.untilNext(), done)) {
        lock.unlock();
        try {
            progress.report();
        } catch (...) {
            stop = std::current_exception();
        }
        lock.lock();
        if (stop) break;
    }
    if (stop && !done()) {
        lock.unlock();
        SQLCancel(work->statement().get());
        lock.lock();
        if (!desk_->finished.wait_for(lock, kCancelTime, done)) {
            work->giveUp();
            gaveUp_ = true;
            desk_->closed = true;
            thread_.detach();
        }
    }
    const std::exception_ptr failure = stop ? stop : std::exchange(desk_->failure, nullptr);
    if (!gaveUp_) desk_->failure = nullptr;
    lock.unlock();
    if (failure) std::rethrow_exception(failure);
}

}  // namespace orvenmod::store::odbc
