// How much of an anomaly test runs, and how the same one is run again. Tests try each of the places where something can
// go wrong when ORVEN_TORTURE=full; otherwise a few of them, or as many as ORVEN_TORTURE says, chosen by a number that
// is printed and that ORVEN_SEED gives again. Where one line of the program is passed thousands of times each time is a
// place of its own; ORVEN_TORTURE=places tries every line instead, where a test tells them apart.
#pragma once

#include <random>
#include <vector>

namespace orvenmod::test {

bool fullLength();
bool everyPlace();

/// Of this process; told on its output when it is first asked for.
unsigned seed();

/// How many rounds to do, where each costs alike: `full` at full length, otherwise `few`, or as many as wanted.
int roundsOf(int few, int full);

/// For a test of its own choice, so that one that runs alone chooses as it did among others.
std::mt19937 randomFor(const char* test);

/// Which of the places from 1 to `count` to try, in order: all of them at full length, otherwise `few`, the last one
/// among them.
std::vector<int> placesOf(int count, int few, std::mt19937& random);
/// The same of places that are known.
std::vector<int> someOf(std::vector<int> places, int few, std::mt19937& random);

/// On the output, and noted with the running test.
void tellTried(int places);

}  // namespace orvenmod::test
