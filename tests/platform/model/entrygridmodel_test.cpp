// What the contract of the entry grid can't see: what a cell shows, and which letters it takes.
#include "platform/model/entrygridmodel.h"

#include <gtest/gtest.h>

#include "platform/model/cellinput.h"

namespace orvenmod::platform::model {
namespace {

TEST(EntryGridModel, aNumberShowsTheDecimalsOfItsRuleAndKeepsItsText) {
    EntryGridModel grid({{.title = "数量", .type = CellType::number}});
    grid.setRowCount(1);
    grid.setText(1, 1, "1234.5678");
    EXPECT_EQ(grid.displayText(1, 1), "1234.57");
    grid.setNumberRule(1, 0, {.decimals = 0});
    EXPECT_EQ(grid.displayText(1, 1), "1235");
    grid.setNumberRule(1, 1, {.decimals = 3});
    EXPECT_EQ(grid.displayText(1, 1), "1234.568");
    EXPECT_EQ(grid.text(1, 1), "1234.5678");
    grid.setText(1, 1, "");
    EXPECT_EQ(grid.displayText(1, 1), "");
}

TEST(EntryGridModel, aCurrencyShowsSeparatorsAndTwoDecimals) {
    EntryGridModel grid({{.title = "金额", .type = CellType::currency}});
    grid.setRowCount(1);
    grid.setText(1, 1, "1234.5");
    EXPECT_EQ(grid.displayText(1, 1), "1,234.50");
}

TEST(EntryGridModel, headingsAreTheTextOfRowNought) {
    EntryGridModel grid({{.title = "项目", .width = 1200}});
    EXPECT_EQ(grid.text(1, 0), "项目");
    EXPECT_EQ(grid.columnWidth(1), 1200);
    grid.setText(1, 0, "名称");
    EXPECT_EQ(grid.heading(1), "名称");
}

TEST(EntryGridModel, onlyCellsOfTextThatAreShownAndUnlockedTakeText) {
    EntryGridModel grid({{.title = "甲"}, {.title = "乙", .hidden = true}, {.title = "丙", .locked = true}});
    grid.setRowCount(1);
    EXPECT_TRUE(grid.takesText(1, 1));
    EXPECT_FALSE(grid.takesText(2, 1));
    EXPECT_FALSE(grid.takesText(3, 1));
    for (const CellType type : {CellType::button, CellType::combo, CellType::checkBox}) {
        grid.setCellType(1, 1, type);
        EXPECT_FALSE(grid.takesText(1, 1));
    }
}

TEST(CellInput, aDayWithoutItsYearNeedsAClock) {
    EXPECT_EQ(readDate("3-4", Date{2026, 11, 22}).text, "2026-03-04");
    EXPECT_EQ(readDate("3-4", std::nullopt).refusal, "请输入日期，如 2026-03-04");
    EXPECT_EQ(readDate("2026-3-4", std::nullopt).text, "2026-03-04");
}

TEST(CellInput, fullWidthLettersAndForeignBlanksArePlainOnes) {
    EXPECT_EQ(plainLetters("\u3000Ａ１～！\u00A0"), "A1~!");
    EXPECT_EQ(plainLetters("−１。５"), "-1.5");
    EXPECT_EQ(plainLetters("螺丝 M6"), "螺丝 M6");
    EXPECT_EQ(plainLetters("\xEF\xBC"), "\xEF\xBC") << "a letter cut in two";
    EXPECT_EQ(plainLetters("\uFF00\uFF5F"), "\uFF00\uFF5F");
}

}  // namespace
}  // namespace orvenmod::platform::model
