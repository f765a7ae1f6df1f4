#include "platform/sheet/utf16.h"

#include <gtest/gtest.h>

namespace orvenmod::platform {
namespace {

TEST(Utf16, writesCharactersBeyondTheBasicPlaneAsPairs) { EXPECT_EQ(toUtf16("a客😀"), u"a客😀"); }

TEST(Utf16, replacesBrokenSequences) {
    EXPECT_EQ(toUtf16("a\xFFz"), u"a\uFFFDz");
    EXPECT_EQ(toUtf16("\xE5\xAE"), u"\uFFFD");
    EXPECT_EQ(toUtf16("\xED\xA0\x80"), u"\uFFFD");
}

TEST(Utf16, leavesATextThatAPackageMayHold) {
    EXPECT_EQ(readableText("a\xFF\xE5\xAEz"), "a\uFFFD\uFFFDz");
    EXPECT_EQ(readableText("\xED\xA0\x80\xEF\xBF\xBE\xEF\xBF\xBF客"), "\uFFFD\uFFFD\uFFFD客");
    EXPECT_EQ(readableText("a客😀\uFFFD<"), "a客😀\uFFFD<");
    EXPECT_EQ(readableText(""), "");
}

TEST(Utf16, neverHalvesAPair) {
    EXPECT_EQ(toUtf16("ab😀", 3), u"ab");
    EXPECT_EQ(cutToUnits("ab😀", 3), "ab");
    EXPECT_EQ(cutToUnits("ab😀", 4), "ab😀");
}

TEST(Utf16, cutsInCharactersAndNotInBytes) { EXPECT_EQ(cutToUnits("客户客户", 3), "客户客"); }

}  // namespace
}  // namespace orvenmod::platform
