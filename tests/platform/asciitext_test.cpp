#include "platform/asciitext.h"

#include <gtest/gtest.h>

namespace orvenmod::test {
namespace {

using platform::lowerCase;
using platform::withoutBlanks;

TEST(AsciiText, lowerCaseLeavesOtherLettersAlone) { EXPECT_EQ(lowerCase("FSelfZ客Ä"), "fselfz客Ä"); }

TEST(AsciiText, withoutBlanksTakesOuterBlanksAndTabulatorsOnly) {
    EXPECT_EQ(withoutBlanks(" \t a b \t"), "a b");
    EXPECT_EQ(withoutBlanks("a\n"), "a\n");
    EXPECT_EQ(withoutBlanks(" \t "), "");
}

}  // namespace
}  // namespace orvenmod::test
