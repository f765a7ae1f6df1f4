#include "torture/share.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <numeric>
#include <string>
#include <utility>

namespace orvenmod::test {

namespace {

std::string wanted() {
    const char* named = std::getenv("ORVEN_TORTURE");
    return named == nullptr ? "" : named;
}

}  // namespace

bool fullLength() { return wanted() == "full"; }
bool everyPlace() { return wanted() == "places"; }

int roundsOf(int few, int full) {
    if (fullLength()) return full;
    const std::string rounds = wanted();
    return rounds.empty() || everyPlace() ? few : std::max(few, std::stoi(rounds));
}

unsigned seed() {
    static const unsigned seed = [] {
        const char* given = std::getenv("ORVEN_SEED");
        const unsigned chosen = given == nullptr ? std::random_device()() : static_cast<unsigned>(std::stoul(given));
        std::cout << "ORVEN_SEED=" << chosen << " runs this again" << std::endl;
        return chosen;
    }();
    return seed;
}

std::mt19937 randomFor(const char* test) {
    std::vector<unsigned> parts = {seed()};
    for (const char* at = test; *at != '\0'; ++at)
        parts.push_back(static_cast<unsigned char>(*at));
    std::seed_seq mixed(parts.begin(), parts.end());
    return std::mt19937(mixed);
}

std::vector<int> placesOf(int count, int few, std::mt19937& random) {
    std::vector<int> places(static_cast<std::size_t>(std::max(count, 0)));
    std::iota(places.begin(), places.end(), 1);
    return someOf(std::move(places), few, random);
}

std::vector<int> someOf(std::vector<int> places, int few, std::mt19937& random) {
    const int count = static_cast<int>(places.size());
    few = roundsOf(few, count);
    if (count <= few) return places;
    std::shuffle(places.begin(), places.end() - 1, random);
    places.erase(places.begin(), places.end() - few);
    std::sort(places.begin(), places.end());
    return places;
}

void tellTried(int places) {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::cout << places << " places tried: " << test.test_suite_name() << "." << test.name() << std::endl;
    testing::Test::RecordProperty("tried", places);
}

}  // namespace orvenmod::test
