// What goes over all rows of a list has a bar, and cancelled it has changed nothing.
#include "platform/contract/listgrid.h"

namespace orvenmod::test {
namespace {

using namespace platform;

constexpr int kRows = 3000;
constexpr int kCancelled = 1000;

class ListLongWork : public ToolkitContract {
protected:
    void overManyRows(const std::function<void(User&, ListGrid&)>& steps) {
        std::vector<std::vector<std::string>> texts;
        for (int row = 0; row < kRows; ++row)
            texts.push_back({std::to_string(10000 + row * 7919 % kRows), row % 2 == 0 ? "螺丝" : "螺母", "1", "x"});
        rows = std::make_shared<TextRows>(std::move(texts));
        use(
            arrangedWindow(), [this](Window& window) { window.get<ListGrid>("vsf1").bind(rows); },
            [&](User& user) {
                auto& grid = user.control<ListGrid>("vsf1");
                grid.setFocus();
                rows->fetches = 0;
                steps(user, grid);
            });
    }

    std::shared_ptr<TextRows> rows;
};

TEST_F(ListLongWork, aCopyThatIsCancelledLeavesTheClipboard) {
    overManyRows([this](User& user, ListGrid& grid) {
        user.press("Ctrl+C");
        const std::string before = user.copied();
        for (int row = 1; row <= kRows; ++row)
            grid.setSelected(row, true);
        rows->fetches = 0;
        user.cancelProgress(kCancelled);
        user.press("Ctrl+C");
        EXPECT_GE(rows->fetches, kCancelled / 2);
        EXPECT_LT(rows->fetches, kRows);
        EXPECT_EQ(user.copied(), before);
        user.press("Ctrl+C");
        EXPECT_EQ(std::ranges::count(user.copied(), '\n'), kRows + 1);
        EXPECT_NE(user.copiedHtml().find("螺母"), std::string::npos);
    });
}

TEST_F(ListLongWork, aNarrowingThatIsCancelledClosesItsLine) {
    overManyRows([this](User& user, ListGrid& grid) {
        user.cancelProgress(kCancelled);
        user.press("Ctrl+F");
        EXPECT_LT(rows->fetches, kRows);
        user.typeKeys("1");
        EXPECT_EQ(grid.narrowing(), "") << "no line has the keyboard";
        EXPECT_EQ(grid.rowCount(), kRows + 1);
        user.press("Ctrl+F");
        user.typeKeys("lm");
        EXPECT_EQ(grid.rowCount(), kRows / 2 + 1);
    });
}

TEST_F(ListLongWork, aLineThatIsOpenWhenItsNarrowingIsCancelledCloses) {
    overManyRows([this](User& user, ListGrid& grid) {
        user.press("Ctrl+F");
        user.typeKeys("lm");
        grid.narrow("");
        user.press("Esc");
        user.press("Ctrl+F");
        grid.bind(rows);
        user.cancelProgress(kCancelled);
        user.typeKeys("l");
        EXPECT_EQ(grid.narrowing(), "");
        EXPECT_EQ(grid.rowCount(), kRows + 1);
    });
}

TEST_F(ListLongWork, aSortThatIsCancelledLeavesTheOrder) {
    overManyRows([this](User& user, ListGrid& grid) {
        user.cancelProgress(kCancelled);
        user.clickHeading("vsf1", 0);
        EXPECT_LT(rows->fetches, kRows);
        EXPECT_EQ(grid.sortedColumn(), -1);
        EXPECT_EQ(grid.text(2, 0), "11919");
        user.clickHeading("vsf1", 0);
        EXPECT_EQ(grid.sortedColumn(), 0);
        EXPECT_EQ(grid.text(2, 0), "10001");
        user.cancelProgress(kCancelled);
        user.clickHeading("vsf1", 1);
        EXPECT_EQ(grid.sortedColumn(), 0);
        EXPECT_EQ(grid.sortOrder(), SortOrder::ascending);
        EXPECT_EQ(grid.text(2, 0), "10001");
    });
}

TEST_F(ListLongWork, aSortOfRowsThatWereReadAgainIsCancelledToTheToldOrder) {
    overManyRows([this](User& user, ListGrid& grid) {
        user.clickHeading("vsf1", 0);
        grid.bind(rows);
        rows->fetches = 0;
        user.cancelProgress(kCancelled);
        grid.arrange();
        EXPECT_LT(rows->fetches, kRows);
        EXPECT_EQ(grid.sortedColumn(), -1);
        EXPECT_EQ(grid.text(2, 0), "11919");
        EXPECT_EQ(grid.currentRow(), 1);
        user.clickHeading("vsf1", 0);
        EXPECT_EQ(grid.sortOrder(), SortOrder::ascending) << "as a first click on a heading";
        user.cancelProgress(kCancelled);
        grid.sort(1, SortOrder::descending);
        EXPECT_EQ(grid.sortedColumn(), 0);
        EXPECT_EQ(grid.sortOrder(), SortOrder::ascending);
        EXPECT_EQ(grid.text(2, 0), "10001");
    });
}

TEST_F(ListLongWork, aNarrowingOfRowsThatWereReadAgainIsCancelledToAllRows) {
    overManyRows([this](User& user, ListGrid& grid) {
        user.press("Ctrl+F");
        user.typeKeys("lm1");
        const int narrowed = grid.rowCount();
        grid.bind(rows);
        grid.arrange();
        EXPECT_EQ(grid.rowCount(), narrowed);
        grid.bind(rows);
        user.cancelProgress(kCancelled);
        grid.arrange();
        EXPECT_EQ(grid.narrowing(), "");
        EXPECT_EQ(grid.rowCount(), kRows + 1);
        user.typeKeys("1");
        EXPECT_EQ(grid.narrowing(), "") << "no line has the keyboard";
    });
}

}  // namespace
}  // namespace orvenmod::test
