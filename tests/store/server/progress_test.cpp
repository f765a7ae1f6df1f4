#include "store/server/progress.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

#include "store/server/socketwait.h"

namespace orvenmod::store::server {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

Clock::time_point now;
Clock::time_point clockOfTheTest() { return now; }

class ProgressOfAStatement : public ::testing::Test {
protected:
    ProgressOfAStatement() {
        progress_.set([this] { ++calls_; });
        progress_.start();
    }

    int calls_ = 0;
    Progress progress_{clockOfTheTest};
};

TEST_F(ProgressOfAStatement, IsNotReportedWhileItIsShort) {
    now += milliseconds(99);
    progress_.report();
    EXPECT_EQ(calls_, 0);
    EXPECT_EQ(progress_.untilNext(), milliseconds(1));
}

TEST_F(ProgressOfAStatement, IsReportedEveryTenthOfASecond) {
    for (int i = 0; i < 10; ++i) {
        now += milliseconds(50);
        progress_.report();
    }
    EXPECT_EQ(calls_, 5);
}

TEST_F(ProgressOfAStatement, IsNotReportedAtOnceAfterACallbackThatTookLong) {
    progress_.set([this] {
        ++calls_;
        now += milliseconds(300);
    });
    now += milliseconds(100);
    progress_.report();
    progress_.report();
    EXPECT_EQ(calls_, 1);
    EXPECT_EQ(progress_.untilNext(), milliseconds(100));
}

TEST_F(ProgressOfAStatement, IsReportedEarlyBeforeWorkThatCannotBeInterrupted) {
    now += milliseconds(19);
    progress_.reportBeforeWork();
    EXPECT_EQ(calls_, 0);
    now += milliseconds(1);
    progress_.reportBeforeWork();
    EXPECT_EQ(calls_, 1);
    EXPECT_EQ(progress_.untilNext(), milliseconds(100));
}

TEST_F(ProgressOfAStatement, StopsNothingThatMustRunToItsEnd) {
    progress_.set([this] {
        ++calls_;
        throw std::runtime_error("stop");
    });
    {
        const Progress::Unstoppable toTheEnd(progress_);
        now += milliseconds(100);
        EXPECT_NO_THROW(progress_.report());
        progress_.report();
        EXPECT_EQ(calls_, 1);
    }
    now += milliseconds(100);
    EXPECT_THROW(progress_.report(), std::runtime_error);
}

TEST_F(ProgressOfAStatement, NeedsNoCallback) {
    progress_.set({});
    now += milliseconds(500);
    progress_.report();
    EXPECT_FALSE(progress_);
}

class SocketWait : public ::testing::Test {
protected:
    SocketWait() { EXPECT_EQ(::pipe(ends_.data()), 0); }
    ~SocketWait() override {
        ::close(ends_[0]);
        ::close(ends_[1]);
    }

    std::array<int, 2> ends_{};
    Progress progress_;
};

TEST_F(SocketWait, EndsWhenThereIsSomethingToRead) {
    ASSERT_EQ(::write(ends_[1], "x", 1), 1);
    EXPECT_TRUE(awaitSocket(ends_[0], Awaited::readable, progress_));
}

TEST_F(SocketWait, EndsAtItsLimit) {
    EXPECT_FALSE(awaitSocket(ends_[0], Awaited::readable, progress_, milliseconds(20)));
}

TEST_F(SocketWait, ReportsWhileItLasts) {
    int calls = 0;
    progress_.set([&] {
        if (++calls == 3) static_cast<void>(::write(ends_[1], "x", 1) == 1);
    });
    progress_.start();
    EXPECT_TRUE(awaitSocket(ends_[0], Awaited::readable, progress_));
    EXPECT_EQ(calls, 3);
}

TEST_F(SocketWait, IsEndedByAReportThatThrows) {
    progress_.set([] { throw std::runtime_error("stop"); });
    progress_.start();
    EXPECT_THROW(awaitSocket(ends_[0], Awaited::readable, progress_), std::runtime_error);
}

}  // namespace
}  // namespace orvenmod::store::server
