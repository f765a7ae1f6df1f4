#include "store/handlepool.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace orvenmod::store {
namespace {

using std::chrono::minutes;
using Clock = std::chrono::steady_clock;

Clock::time_point now;
Clock::time_point clockOfTheTest() { return now; }

struct Life {
    bool alive = true;
    bool clean = true;
    bool gone = false;
    int closed = 0;
    int resets = 0;
};

class Handle {
public:
    explicit Handle(Life& life) : life_(life) {}
    ~Handle() { ++life_.closed; }
    bool alive() const {
        if (life_.gone) throw std::runtime_error("gone");
        return life_.alive;
    }
    bool reset() noexcept {
        ++life_.resets;
        return life_.clean;
    }

private:
    Life& life_;
};

class Pool : public ::testing::Test {
protected:
    static std::unique_ptr<Handle> handle(Life& life) { return std::make_unique<Handle>(life); }

    Life first_;
    Life second_;
    Life third_;
    HandlePool<Handle> pool_{{2, minutes(10)}, clockOfTheTest};
};

TEST_F(Pool, GivesNothingAtFirst) { EXPECT_EQ(pool_.take("a"), nullptr); }

TEST_F(Pool, GivesAHandleThatCameBackAndWasReset) {
    auto given = handle(first_);
    const Handle* address = given.get();
    pool_.put("a", std::move(given));
    EXPECT_EQ(first_.resets, 1);
    EXPECT_EQ(pool_.take("a").get(), address);
    EXPECT_EQ(pool_.size(), 0U);
}

TEST_F(Pool, GivesNoHandleOfAnotherKey) {
    pool_.put("a", handle(first_));
    EXPECT_EQ(pool_.take("b"), nullptr);
    EXPECT_EQ(pool_.size(), 1U);
}

TEST_F(Pool, ClosesAHandleThatCannotBeReset) {
    first_.clean = false;
    pool_.put("a", handle(first_));
    EXPECT_EQ(first_.closed, 1);
    EXPECT_EQ(pool_.size(), 0U);
}

TEST_F(Pool, PassesOverHandlesThatDiedMeanwhile) {
    pool_.put("a", handle(first_));
    pool_.put("a", handle(second_));
    second_.alive = false;
    EXPECT_NE(pool_.take("a"), nullptr);
    EXPECT_EQ(second_.closed, 1);
}

TEST_F(Pool, PassesOnWhatTheLookAtAHandleThrows) {
    pool_.put("a", handle(first_));
    first_.gone = true;
    EXPECT_THROW(pool_.take("a"), std::runtime_error);
    EXPECT_EQ(first_.closed, 1);
    EXPECT_EQ(pool_.take("a"), nullptr);
}

TEST_F(Pool, ClosesTheOldestBeyondItsMost) {
    pool_.put("a", handle(first_));
    pool_.put("b", handle(second_));
    pool_.put("c", handle(third_));
    EXPECT_EQ(first_.closed, 1);
    EXPECT_EQ(second_.closed + third_.closed, 0);
}

TEST_F(Pool, ClosesWhatWasIdleTooLongWheneverItIsUsed) {
    pool_.put("a", handle(first_));
    now += minutes(6);
    pool_.put("b", handle(second_));
    now += minutes(6);
    EXPECT_EQ(pool_.take("c"), nullptr);
    EXPECT_EQ(first_.closed, 1);
    EXPECT_EQ(second_.closed, 0);
}

TEST_F(Pool, ClosesEveryHandleOnDemand) {
    pool_.put("a", handle(first_));
    pool_.put("b", handle(second_));
    pool_.drop();
    EXPECT_EQ(first_.closed + second_.closed, 2);
}

TEST_F(Pool, NeitherGivesNorClosesItsHandlesOnTheOtherSideOfAFork) {
    pool_.put("a", handle(first_));
    const pid_t child = ::fork();
    if (child == 0) {
        const bool given = pool_.take("a") != nullptr;
        ::_exit(given || first_.closed != 0 ? 1 : 0);
    }
    int status = 1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_NE(pool_.take("a"), nullptr);
}

}  // namespace
}  // namespace orvenmod::store
