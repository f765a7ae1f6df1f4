// Texts with a piece of theirs replaced.
#include "platform/replaceall.h"

#include <gtest/gtest.h>

namespace orvenmod::test {
namespace {

using platform::replaceAll;

TEST(ReplaceAll, takesEveryOccurrenceOnce) {
    EXPECT_EQ(replaceAll("fitemid,fNumber,fName", ",", ",a."), "fitemid,a.fNumber,a.fName");
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll(".1.2.1.2.", ".1.2.", ""), "1.2.");
}

TEST(ReplaceAll, leavesATextWithoutThePieceAndAnEmptyPiece) {
    EXPECT_EQ(replaceAll("abc", "x", "y"), "abc");
    EXPECT_EQ(replaceAll("abc", "", "y"), "abc");
    EXPECT_EQ(replaceAll("", "x", "y"), "");
}

}  // namespace
}  // namespace orvenmod::test
