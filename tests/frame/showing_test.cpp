// One showing of a window, and the work at its end.
#include "frame/showing.h"

#include <gtest/gtest.h>

#include <string>

namespace orvenmod::test {
namespace {

const auto kMake = [] { return std::make_unique<std::string>("parts"); };

TEST(Showing, thePartsLiveFromItsBeginningToItsEnd) {
    std::unique_ptr<std::string> parts;
    std::string seen;
    showOnce(parts, kMake, [&] { seen = *parts; });
    EXPECT_EQ(seen, "parts");
    EXPECT_FALSE(parts);
}

TEST(Showing, thePartsEndWithAFailureToo) {
    std::unique_ptr<std::string> parts;
    EXPECT_THROW(showOnce(parts, kMake, [] { throw std::runtime_error("no rows"); }), std::runtime_error);
    EXPECT_FALSE(parts);
}

TEST(Showing, aSecondOneMeanwhileIsRefusedAndLeavesTheFirst) {
    std::unique_ptr<std::string> parts;
    showOnce(parts, kMake, [&parts] {
        EXPECT_THROW(showOnce(parts, kMake, [] { FAIL() << "shown twice"; }), std::logic_error);
        EXPECT_TRUE(parts);
    });
}

}  // namespace
}  // namespace orvenmod::test
