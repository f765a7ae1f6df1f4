#include <gtest/gtest.h>

#include "designer/filled.h"
#include "designer/lists.h"
#include "frame/conversion.h"

namespace orvenmod::test {
namespace {

TEST(Lists, anEmptyTextHoldsNoEntry) { EXPECT_TRUE(splitList("").empty()); }

TEST(Lists, aTextWithoutACommaIsOneEntry) { EXPECT_EQ(splitList("fText1"), std::vector<std::string>{"fText1"}); }

TEST(Lists, entriesKeepTheirBlanksAndMayBeEmpty) {
    EXPECT_EQ(splitList("a, b,,"), (std::vector<std::string>{"a", " b", "", ""}));
}

TEST(Lists, anEntryBeyondTheLastIsASubscriptOutOfRange) {
    const auto list = splitList("a,b");
    EXPECT_EQ(entryOf(list, 1), "b");
    try {
        entryOf(list, 2);
        FAIL();
    } catch (const ConversionFailure& failure) {
        EXPECT_EQ(failure.number(), 9);
        EXPECT_STREQ(failure.what(), "下标越界");
    }
}

TEST(Filled, everyPlaceTakesItsValueWhereverItStands) {
    EXPECT_EQ(filled("{a}-{b}-{a}", {{"a", "1"}, {"b", "2"}}), "1-2-1");
    EXPECT_EQ(filled("no place", {}), "no place");
}

TEST(Filled, whatLooksLikeAPlaceInAValueStays) {
    EXPECT_EQ(filled("'{name}',{t}", {{"name", "{t}"}, {"t", "6050"}}), "'{t}',6050");
}

TEST(Filled, aPlaceWithoutAValueIsAMistakeOfTheCaller) { EXPECT_THROW(filled("{x}", {}), std::logic_error); }

}  // namespace
}  // namespace orvenmod::test
