#include <gtest/gtest.h>

#include <string>

// From the README.
std::string pickGoods(const std::string& database, const std::string& searchText);

namespace {

TEST(Readme, theFunctionThatItShowsLinks) {
    std::string (*const shown)(const std::string&, const std::string&) = &pickGoods;
    EXPECT_NE(shown, nullptr);
}

}  // namespace
