#include "platform/model/rowindex.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace orvenmod::platform::model {
namespace {

TEST(RowIndex, countsLikeTheSlotsUntilSomethingIsRemoved) {
    RowIndex index;
    index.reset(3);
    EXPECT_EQ(index.append(), 3U);
    EXPECT_EQ(index.size(), 4U);
    EXPECT_EQ(index.slotAt(3), 3U);
    EXPECT_EQ(index.positionOf(2), 2U);
}

TEST(RowIndex, aCutKeepsWhatWasRemovedBefore) {
    RowIndex index;
    index.reset(200);
    index.remove(10);
    index.remove(150);
    index.truncate(100);
    EXPECT_EQ(index.size(), 100U);
    EXPECT_EQ(index.slotAt(10), 11U);
    EXPECT_FALSE(index.has(10));
    EXPECT_EQ(index.append(), 101U);
    EXPECT_EQ(index.slotAt(100), 101U);
    index.truncate(0);
    EXPECT_EQ(index.append(), 0U);
}

TEST(RowIndex, followsAPlainListThroughRandomEdits) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    RowIndex index;
    std::vector<std::size_t> plain;
    for (int step = 0; step < 5000; ++step) {
        const auto action = random() % 100;
        if (action < 55 || plain.empty()) {
            plain.push_back(index.append());
        } else if (action < 99) {
            const std::size_t position = random() % plain.size();
            index.remove(position);
            plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(position));
        } else {
            const std::size_t size = random() % (plain.size() + 1);
            index.truncate(size);
            plain.resize(size);
        }
        ASSERT_EQ(index.size(), plain.size());
        if (plain.empty()) continue;
        const std::size_t position = random() % plain.size();
        ASSERT_EQ(index.slotAt(position), plain[position]);
        ASSERT_EQ(index.positionOf(plain[position]), position);
        ASSERT_TRUE(index.has(plain[position]));
    }
}

TEST(RowIndex, removesAMillionRowsOneByOne) {
    RowIndex index;
    index.reset(1000000);
    while (index.size() > 0)
        index.remove(index.size() / 2);
    EXPECT_EQ(index.size(), 0U);
    EXPECT_EQ(index.slotCount(), 1000000U);
}

}  // namespace
}  // namespace orvenmod::platform::model
