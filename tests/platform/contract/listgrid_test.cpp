#include "platform/contract/listgrid.h"

#include <stdexcept>

namespace orvenmod::test {
namespace {

using namespace platform;

std::shared_ptr<const RowSource> threeRows() {
    return std::make_shared<TextRows>(
        std::vector<std::vector<std::string>>{{"5", "1234.5"}, {"6", "NULL"}, {"7", "0.00"}});
}

TEST_F(ToolkitContract, aBoundGridShowsTheSourceBehindTheFixedColumns) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(threeRows());
        EXPECT_EQ(grid.rowCount(), 4);
        EXPECT_EQ(grid.columnCount(), 3);
        EXPECT_EQ(grid.text(1, 0), "");
        EXPECT_EQ(grid.text(1, 1), "5");
        EXPECT_EQ(grid.text(3, 2), "0.00");
        EXPECT_EQ(grid.text(2, 2), "");
        EXPECT_EQ(grid.value(1, 2), "1234.5");
        EXPECT_EQ(grid.text(0, 1), "内码");
    });
}

TEST_F(ToolkitContract, aSourceMayHaveMoreColumnsThanWereDrawn) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(std::make_shared<TextRows>(std::vector<std::vector<std::string>>{{"1", "2", "3", "4"}}));
        EXPECT_EQ(grid.columnCount(), 5);
        grid.setText(0, 4, "单价");
        EXPECT_EQ(grid.text(0, 4), "单价");
        EXPECT_EQ(grid.text(1, 4), "4");
    });
}

TEST_F(ToolkitContract, aGridWithoutRowsHasItsHeading) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        EXPECT_EQ(grid.rowCount(), 1);
        grid.bind(std::make_shared<TextRows>(std::vector<std::vector<std::string>>{}));
        EXPECT_EQ(grid.rowCount(), 1);
        EXPECT_EQ(grid.currentRow(), 0);
    });
}

TEST_F(ToolkitContract, cellsBeyondTheGridAreRefused) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(threeRows());
        EXPECT_THROW(grid.text(4, 0), std::out_of_range);
        EXPECT_THROW(grid.text(1, 3), std::out_of_range);
        EXPECT_THROW(grid.setText(-1, 0, "x"), std::out_of_range);
        EXPECT_THROW(grid.setCurrentRow(4), std::out_of_range);
    });
}

TEST_F(ToolkitContract, aWrittenCellCoversTheSource) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(threeRows());
        grid.setText(1, 2, "改");
        grid.setText(3, 2, "");
        EXPECT_EQ(grid.text(1, 2), "改");
        EXPECT_EQ(grid.value(3, 2), "");
        grid.setText(3, 2, "8");
        EXPECT_EQ(grid.text(3, 2), "8");
        grid.setText(3, 2, "");
        EXPECT_EQ(grid.text(3, 2), "");
        grid.bind(threeRows());
        EXPECT_EQ(grid.text(1, 2), "1234.5");
        EXPECT_EQ(grid.text(3, 2), "0.00");
    });
}

TEST_F(ToolkitContract, aFormatChangesWhatShowsAndNotTheValue) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(threeRows());
        grid.setColumnFormat(2, "#,###.##");
        EXPECT_EQ(grid.columnFormat(2), "#,###.##");
        EXPECT_EQ(grid.text(1, 2), "1,234.5");
        EXPECT_EQ(grid.value(1, 2), "1234.5");
        EXPECT_EQ(grid.text(2, 2), "");
        EXPECT_EQ(grid.text(0, 2), "代码");
    });
}

TEST_F(ToolkitContract, columnPropertiesStayOverABinding) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(threeRows());
        grid.setColumnHidden(1, true);
        grid.setColumnAlignment(2, 7);
        grid.setHeaderAlignment(2, 4);
        grid.setColumnWidth(2, 1500);
        grid.setColumnFormat(2, "#,###");
        grid.bind(threeRows());
        EXPECT_TRUE(grid.columnHidden(1));
        EXPECT_FALSE(grid.columnHidden(2));
        EXPECT_EQ(grid.columnAlignment(2), 7);
        EXPECT_EQ(grid.columnWidth(2), 1500);
        EXPECT_EQ(grid.columnFormat(2), "#,###");
        EXPECT_EQ(grid.text(0, 2), "代码");
    });
}

TEST_F(ToolkitContract, anUnboundGridIsFilledRowByRow) {
    use(listWindow(0), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.addRow("1\t甲\tA");
        grid.addRow("2\t乙");
        EXPECT_EQ(grid.rowCount(), 3);
        EXPECT_EQ(grid.text(1, 2), "A");
        EXPECT_EQ(grid.text(2, 2), "");
        grid.setText(2, 2, "B");
        EXPECT_EQ(grid.text(2, 2), "B");
        grid.setRowCount(5);
        EXPECT_EQ(grid.rowCount(), 5);
        EXPECT_EQ(grid.text(4, 1), "");
        grid.setRowCount(1);
        EXPECT_EQ(grid.rowCount(), 1);
    });
}

TEST_F(ToolkitContract, aRemovedRowMovesTheOthersUp) {
    use(listWindow(), [](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(threeRows());
        grid.setText(3, 2, "改");
        const Colour red{175, 0, 0};
        grid.setRowColour(3, &red);
        grid.removeRow(1);
        EXPECT_EQ(grid.rowCount(), 3);
        EXPECT_EQ(grid.text(1, 1), "6");
        EXPECT_EQ(grid.text(2, 2), "改");
        grid.setRowColour(2, nullptr);
        EXPECT_THROW(grid.removeRow(3), std::out_of_range);
        EXPECT_THROW(grid.removeRow(0), std::out_of_range);
    });
}

TEST_F(ToolkitContract, aMillionRowsAreBoundWithoutReadingThem) {
    const auto source = std::make_shared<MillionRows>();
    use(listWindow(), [&](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(source);
        EXPECT_EQ(grid.rowCount(), 1000001);
        grid.setCurrentRow(1);
        EXPECT_EQ(grid.text(1000000, 1), "1000000");
        grid.removeRow(500000);
        EXPECT_EQ(grid.rowCount(), 1000000);
        EXPECT_EQ(grid.text(500000, 1), "500001");
        EXPECT_EQ(grid.text(499999, 1), "499999");
    });
    EXPECT_LT(source->reads, 10000U);
}

TEST_F(ToolkitContract, aWholeColumnOfAMillionRowsCanBeBlanked) {
    use(listWindow(), [&](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        grid.bind(std::make_shared<MillionRows>());
        for (int row = 1; row < grid.rowCount(); ++row) {
            if (grid.value(row, 2) == "0") grid.setText(row, 2, "");
        }
        EXPECT_EQ(grid.text(1, 2), "");
        EXPECT_EQ(grid.text(1000000, 2), "");
        EXPECT_EQ(grid.text(1000000, 1), "1000000");
    });
}

}  // namespace
}  // namespace orvenmod::test
