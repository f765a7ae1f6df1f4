// What the contract of the entry grid can't see: what a cell shows, and which letters it takes.
#include "platform/model/entrygridmodel.h"

#include <gtest/gtest.h>

#include "platform/model/numberinput.h"

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

TEST(NumberInput, refusesWhatCanNotBecomeANumberWithinItsLimits) {
    const NumberRule rule{.decimals = 1, .minimum = -5, .maximum = 200};
    for (const char* text : {"", "-", "1", "19", "199", "200", "0.", ".5", "-4.5"}) {
        EXPECT_TRUE(mayBecomeNumber(text, rule)) << text;
    }
    for (const char* text : {"a", "1a", "201", "1.23", "-6", "--", "1-", "1e5"}) {
        EXPECT_FALSE(mayBecomeNumber(text, rule)) << text;
    }
    EXPECT_FALSE(mayBecomeNumber("-", {.decimals = 1, .minimum = 0}));
    EXPECT_FALSE(mayBecomeNumber("1.", {.decimals = 0}));
}

TEST(NumberInput, finishesOnlyNumbersWithinTheLimits) {
    const NumberRule rule{.decimals = 2, .minimum = 10, .maximum = 200};
    EXPECT_EQ(finishedNumber("12.", rule), "12");
    EXPECT_EQ(finishedNumber("+12.50", rule), "12.50");
    EXPECT_EQ(finishedNumber("", rule), "");
    EXPECT_EQ(finishedNumber("5", rule), std::nullopt);
    EXPECT_EQ(finishedNumber("-", rule), std::nullopt);
    EXPECT_EQ(finishedNumber(".", rule), std::nullopt);
    EXPECT_EQ(finishedNumber(".5", NumberRule()), "0.5");
    EXPECT_EQ(finishedNumber("-.5", NumberRule()), "-0.5");
}

TEST(NumberInput, finishesOnlyDaysOfTheCalendar) {
    EXPECT_EQ(finishedDate("2026-1-5"), "2026-01-05");
    EXPECT_EQ(finishedDate("2026/01/05"), "2026-01-05");
    EXPECT_EQ(finishedDate(""), "");
    for (const char* text :
         {"2026", "2026-13-01", "2026-02-29", "2026-1/5", "2026-01-05x", "-1-1-1", "x", "2026--1-5"}) {
        EXPECT_EQ(finishedDate(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace orvenmod::platform::model
