// Thousands of random commands of several clerks beside a model of plain values: after each the database holds what the
// model holds. A walk that fails is made as short as it goes and told as a test's source.
#include <gtest/gtest.h>

#include <cstdio>

#include "store/sqlite/sqlitestore.h"
#include "torture/model.h"
#include "torture/share.h"

namespace orvenmod::test {
namespace {

constexpr int kFewSteps = 400;
constexpr int kFullSteps = 10'000;
constexpr int kMostPlays = 300;  // while a walk is shortened

struct Outcome {
    std::size_t steps = 0;  ///< until it went wrong
    std::string wrong;
    int done = 0;
    int refused = 0;
};

Outcome walk(const std::vector<Step>& steps) {
    Database database;
    Model model(database);
    const TemporaryFolder folder;
    Desk desk(database.connectionString(), folder.path());
    Outcome outcome;
    for (const Step& step : steps) {
        ++outcome.steps;
        outcome.wrong = model.take(step, desk) + model.differenceNow();
        if (!outcome.wrong.empty()) break;
    }
    outcome.done = model.done();
    outcome.refused = model.refused();
    return outcome;
}

/// The walk without every part that it goes wrong without.
std::vector<Step> shortened(std::vector<Step> steps) {
    int plays = 0;
    for (std::size_t part = steps.size() / 2; part > 0 && plays < kMostPlays; part /= 2) {
        for (std::size_t at = 0; at + part <= steps.size() && plays < kMostPlays;) {
            std::vector<Step> fewer = steps;
            fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(at),
                        fewer.begin() + static_cast<std::ptrdiff_t>(at + part));
            ++plays;
            if (walk(fewer).wrong.empty()) {
                at += part;
            } else {
                steps = fewer;
            }
        }
    }
    return steps;
}

void expectRight(const std::vector<Step>& steps) {
    const Outcome outcome = walk(steps);
    std::printf("%d commands done, %d refused\n", outcome.done, outcome.refused);
    if (outcome.wrong.empty()) {
        EXPECT_GT(outcome.done, static_cast<int>(steps.size() / 3));
        EXPECT_GT(outcome.refused, 0);
        return;
    }
    std::vector<Step> failing(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(outcome.steps));
    failing = shortened(failing);
    ADD_FAILURE() << walk(failing).wrong << "\nafter " << failing.size() << " steps:\n  " << textOf(failing);
}

TEST(Walk, ofSeveralClerksLeavesWhatAModelOfPlainValuesHolds) {
    std::mt19937 random = randomFor("walk");
    std::vector<Step> steps(static_cast<std::size_t>(roundsOf(kFewSteps, kFullSteps)));
    std::uniform_int_distribution<unsigned> number(0, 999);
    for (Step& step : steps)
        step = {number(random), number(random), number(random)};
    expectRight(steps);
}

}  // namespace
}  // namespace orvenmod::test
