// A list model whose rows are fetched when they are read.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/model/listgridmodel.h"
#include "platform/model/listoutput.h"

namespace orvenmod::platform::model {
namespace {

/// A hundred rows of which the first ten are at hand; each other one is asked for anew. They lie the other way round.
class FarRows final : public RowSource {
public:
    std::size_t rowCount() const override { return 100; }
    int columnCount() const override { return 1; }
    std::optional<std::string_view> cell(std::size_t row, int) const override {
        if (!holds(row)) {
            ++asked;
            if (fails) throw std::runtime_error("读不到行");
        }
        text_ = std::to_string(row + 1);
        return text_;
    }
    bool holds(std::size_t row) const override { return row < 10; }
    void forEachRow(std::span<const int>, const std::function<void(std::size_t)>& take) const override {
        ++walks;
        for (std::size_t row = rowCount(); row-- > 0;) {
            if (fails) throw std::runtime_error("读不到行");
            take(row);
        }
    }
    void expect(std::span<const std::uint32_t> next) const override {
        expected.assign(next.begin(), next.end());
        if (first.empty()) first = expected;
    }

    mutable std::vector<std::uint32_t> expected;
    mutable std::vector<std::uint32_t> first;
    mutable int asked = 0;
    mutable int walks = 0;
    bool fails = false;

private:
    mutable std::string text_;
};

class FetchedRowsList : public ::testing::Test {
protected:
    FetchedRowsList() {
        list.bind(rows);
        list.column(0).title = "数量";
        list.column(0).kind = ColumnKind::number;
        list.setCurrentColumn(0);
    }

    std::shared_ptr<FarRows> rows = std::make_shared<FarRows>();
    ListGridModel list{{}, 0};
};

TEST_F(FetchedRowsList, asksForNoFurtherRowOnceOneFailed) {
    rows->fails = true;
    for (int row = 50; row < 80; ++row)
        EXPECT_EQ(list.shownText(row, 0), "");
    EXPECT_EQ(rows->asked, 1);
    EXPECT_EQ(list.shownText(7, 0), "7") << "what is at hand shows";
}

TEST_F(FetchedRowsList, tellsWhichRowsFollowInAnotherOrderThanTheTold) {
    (void)list.value(50, 0);
    EXPECT_TRUE(rows->expected.empty()) << "in the told order the source knows";
    list.sort(0, SortOrder::descending);
    EXPECT_TRUE(rows->expected.empty()) << "sorting reads all in the told order";
    EXPECT_EQ(list.value(1, 0), "100");
    ASSERT_EQ(rows->expected.size(), 100U);
    EXPECT_EQ(rows->expected[0], 99U);
    EXPECT_EQ(rows->expected[1], 98U);
    EXPECT_EQ(list.shownText(60, 0), "41");
    EXPECT_EQ(rows->expected.size(), 41U);
    rows->expected.clear();
    EXPECT_EQ(list.text(95, 0), "6") << "at hand";
    EXPECT_TRUE(rows->expected.empty());
    list.sort(0, SortOrder::ascending);
    EXPECT_TRUE(rows->expected.empty()) << "sorted anew";
}

TEST_F(FetchedRowsList, tellsWhichRowsFollowWhereSomeAreCopiedOrSummed) {
    for (int row = 1; row <= 100; ++row)
        list.setSelected(row, row % 3 == 0);
    EXPECT_EQ(copySelectedRows(list).text.substr(0, 11), "数量\n3\n6\n");
    EXPECT_EQ(rows->first, (std::vector<std::uint32_t>{11, 14, 17, 20, 23, 26, 29, 32, 35, 38, 41, 44, 47, 50, 53,
                                                       56, 59, 62, 65, 68, 71, 74, 77, 80, 83, 86, 89, 92, 95, 98}));
    list.sort(0, SortOrder::descending);
    rows->first.clear();
    EXPECT_EQ(copySelectedRows(list).text.substr(0, 13), "数量\n99\n96\n");
    EXPECT_EQ(rows->first.size(), 33U);
    list.setCurrentRow(1);
    list.setSelected(40, true);
    rows->first.clear();
    EXPECT_EQ(list.status(), "显示 100 行，选中 2 行，数量合计 161");
    EXPECT_EQ(rows->first, (std::vector<std::uint32_t>{99, 60}));
}

TEST_F(FetchedRowsList, tellsAFailureOnce) {
    rows->fails = true;
    list.shownText(50, 0);
    EXPECT_TRUE(list.failed());
    EXPECT_EQ(list.takeFailure(), "读不到行");
    EXPECT_FALSE(list.failed());
    list.shownText(51, 0);
    EXPECT_EQ(list.takeFailure(), std::nullopt);
}

TEST_F(FetchedRowsList, asksAgainWhenTheUserLooksAgain) {
    rows->fails = true;
    list.shownText(50, 0);
    rows->fails = false;
    EXPECT_EQ(list.shownText(50, 0), "");
    list.lookAgain();
    EXPECT_EQ(list.shownText(50, 0), "50");
}

TEST_F(FetchedRowsList, whoReadsARowIsToldAndThePaintingIsNot) {
    rows->fails = true;
    EXPECT_THROW((void)list.text(50, 0), std::runtime_error);
    EXPECT_EQ(list.takeFailure(), std::nullopt);
    EXPECT_EQ(list.shownText(50, 0), "");
    EXPECT_EQ(rows->asked, 1);
}

TEST_F(FetchedRowsList, leavesTheSumOutThatCanNotBeRead) {
    list.setSelected(50, true);
    rows->fails = true;
    EXPECT_EQ(list.status(), "显示 100 行，选中 2 行");
    EXPECT_EQ(list.takeFailure(), "读不到行");
    EXPECT_EQ(list.status(), "显示 100 行，选中 2 行");
    EXPECT_EQ(rows->asked, 1);
    rows->fails = false;
    list.lookAgain();
    EXPECT_EQ(list.status(), "显示 100 行，选中 2 行，数量合计 51");
}

TEST_F(FetchedRowsList, addsASumOnceForAllPaintings) {
    list.setSelected(50, true);
    list.status();
    const int asked = rows->asked;
    list.status();
    EXPECT_EQ(rows->asked, asked);
    list.setSelected(51, true);
    EXPECT_EQ(list.status(), "显示 100 行，选中 3 行，数量合计 102");
    list.setSelected(50, false);
    EXPECT_EQ(list.status(), "显示 100 行，选中 2 行，数量合计 52");
    list.setText(51, 0, "7");
    EXPECT_EQ(list.status(), "显示 100 行，选中 2 行，数量合计 8");
    list.setCurrentRow(3);
    EXPECT_EQ(list.status(), "显示 100 行，选中 1 行，数量合计 3");
}

TEST_F(FetchedRowsList, sortsAndNarrowsAndSumsWhateverTheOrderThatRowsComeIn) {
    list.sort(0, SortOrder::descending);
    EXPECT_EQ(list.shownText(1, 0), "100");
    EXPECT_EQ(list.shownText(100, 0), "1");
    list.narrow("9");
    EXPECT_EQ(list.rowCount(), 20);
    EXPECT_EQ(list.shownText(1, 0), "99");
    EXPECT_EQ(list.shownText(19, 0), "9");
    list.narrow("");
    list.sort(0, SortOrder::told);
    EXPECT_EQ(rows->walks, 2);
    for (int row = 1; row <= 100; ++row)
        list.setSelected(row, row % 2 == 0);
    EXPECT_EQ(list.status(), "显示 100 行，选中 50 行，数量合计 2550");
    EXPECT_EQ(rows->walks, 3);
}

TEST_F(FetchedRowsList, isAsBeforeWhereAWalkThroughAllFails) {
    rows->fails = true;
    EXPECT_THROW(list.sort(0, SortOrder::descending), std::runtime_error);
    EXPECT_THROW(list.narrow("9"), std::runtime_error);
    EXPECT_EQ(list.sortedColumn(), -1);
    EXPECT_EQ(list.rowCount(), 101);
    EXPECT_EQ(list.shownText(50, 0), "");
    EXPECT_EQ(list.takeFailure(), std::nullopt) << "whoever sorted was told";
    rows->fails = false;
    list.lookAgain();
    EXPECT_EQ(list.shownText(50, 0), "50");
}

TEST_F(FetchedRowsList, sumsWhatIsLeftWhenRowsAreNarrowed) {
    list.setSelected(50, true);
    EXPECT_EQ(list.status(), "显示 100 行，选中 2 行，数量合计 51");
    list.narrow("50");
    EXPECT_EQ(list.status(), "显示 1 行，共 100 行，选中 1 行，数量合计 50");
}

}  // namespace
}  // namespace orvenmod::platform::model
