#include "store/copy/rowsum.h"

#include <gtest/gtest.h>

namespace orvenmod::store {
namespace {

RowSum sumOf(const std::string& type, const std::vector<const char*>& cells) {
    Recordset rows({{"c"}});
    for (const char* cell : cells) {
        if (cell == nullptr) {
            rows.addNull();
        } else {
            rows.addText(cell);
        }
        rows.endRow();
    }
    RowSum sum({{"c", type}});
    sum.add(rows);
    return sum;
}

TEST(RowSum, IsTheSameInAnyOrder) {
    EXPECT_EQ(sumOf("int", {"1", "2", "3"}), sumOf("int", {"3", "1", "2"}));
    EXPECT_FALSE(sumOf("int", {"1", "2", "3"}) == sumOf("int", {"3", "1", "3"}));
}

TEST(RowSum, CountsARowThatStandsTwice) {
    EXPECT_FALSE(sumOf("int", {"1", "1"}) == sumOf("int", {"1"}));
    EXPECT_FALSE(sumOf("int", {"1", "1", "2"}) == sumOf("int", {"1", "2", "2"}));
}

TEST(RowSum, TellsNullFromTheEmptyTextAndBlanksAtTheEnd) {
    EXPECT_FALSE(sumOf("varchar(9)", {nullptr}) == sumOf("varchar(9)", {""}));
    EXPECT_FALSE(sumOf("varchar(9)", {"a"}) == sumOf("varchar(9)", {"a "}));
    EXPECT_FALSE(sumOf("varchar(9)", {"a"}) == sumOf("varchar(9)", {"A"}));
}

TEST(RowSum, TellsValuesFromTheirNeighbours) {
    Recordset left({{"a"}, {"b"}});
    Recordset right({{"a"}, {"b"}});
    for (const char* cell : {"ab", "c"})
        left.addText(cell);
    for (const char* cell : {"a", "bc"})
        right.addText(cell);
    left.endRow();
    right.endRow();
    RowSum one({{"a", "text"}, {"b", "text"}});
    RowSum other({{"a", "text"}, {"b", "text"}});
    one.add(left);
    other.add(right);
    EXPECT_FALSE(one == other);
}

TEST(RowSum, TakesOneValueInTheTextsOfDifferentStores) {
    EXPECT_EQ(sumOf("decimal(9,2)", {"12.50", "3.00"}), sumOf("decimal(9,2)", {"12.5", "3"}));
    EXPECT_EQ(sumOf("float", {"1e20", "-0"}), sumOf("float", {"100000000000000000000", "0"}));
    EXPECT_EQ(sumOf("real", {"0.1"}), sumOf("real", {"0.10000000149011612"}));
    EXPECT_EQ(sumOf("char(5)", {"ab   "}), sumOf("char(5)", {"ab"}));
    EXPECT_EQ(sumOf("uniqueidentifier", {"6f96"}), sumOf("uniqueidentifier", {"6F96"}));
}

TEST(RowSum, DoesNotTakeDifferentNumbersForOne) {
    EXPECT_FALSE(sumOf("decimal(9,2)", {"10"}) == sumOf("decimal(9,2)", {"1"}));
    EXPECT_FALSE(sumOf("float", {"0.1"}) == sumOf("float", {"0.10000000000000002"}));
}

}  // namespace
}  // namespace orvenmod::store
