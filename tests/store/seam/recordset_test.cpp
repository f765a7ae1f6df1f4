#include "store/recordset.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "store/failure.h"

namespace orvenmod::store {
namespace {

Recordset people() {
    Recordset rows({{"fItemId", ColumnType::integer}, {"fName", ColumnType::text}});
    rows.addText("1");
    rows.addText("甲");
    rows.endRow();
    rows.addText("2");
    rows.addNull();
    rows.endRow();
    return rows;
}

TEST(Recordset, FindsAFieldWithoutRegardToCase) {
    const Recordset rows = people();
    EXPECT_EQ(rows.field("FITEMID"), "1");
    EXPECT_EQ(rows.column("fname"), 1);
}

TEST(Recordset, TakesTheFirstOfTwoColumnsOfOneName) {
    Recordset rows({{"id", ColumnType::integer}, {"ID", ColumnType::integer}});
    EXPECT_EQ(rows.column("Id"), 0);
}

TEST(Recordset, RefusesAnUnknownFieldByName) {
    try {
        people().field("fNoSuch");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 3265);
        EXPECT_NE(failure.text().find("fNoSuch"), std::string::npos);
    }
}

TEST(Recordset, RefusesAFieldBehindTheLastRow) {
    Recordset rows = people();
    rows.moveNext();
    rows.moveNext();
    EXPECT_TRUE(rows.eof());
    try {
        rows.field("fName");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 3021);
    }
}

TEST(Recordset, TellsNullFromTheEmptyText) {
    Recordset rows = people();
    rows.moveNext();
    EXPECT_TRUE(rows.isNull("fName"));
    EXPECT_EQ(rows.text("fName", "none"), "none");
    Recordset empty({{"a", ColumnType::text}});
    empty.addText("");
    empty.endRow();
    EXPECT_FALSE(empty.isNull("a"));
    EXPECT_EQ(empty.field("a"), "");
}

TEST(Recordset, MovesBackToItsFirstRow) {
    Recordset rows = people();
    rows.moveNext();
    rows.moveNext();
    rows.moveFirst();
    EXPECT_EQ(rows.text("fItemId"), "1");
}

TEST(Recordset, KeepsItsCellsWhenItIsMoved) {
    Recordset rows = people();
    const Recordset moved = std::move(rows);
    EXPECT_EQ(moved.cell(0, 1), "甲");
    EXPECT_EQ(moved.rowCount(), 2U);
}

TEST(Recordset, KeepsTextsOfEveryLengthAcrossItsBlocks) {
    std::mt19937 random(20260711);
    std::uniform_int_distribution<std::size_t> length(0, 600);
    std::vector<std::string> texts;
    Recordset rows({{"a", ColumnType::text}, {"b", ColumnType::text}, {"c", ColumnType::text}});
    for (std::size_t row = 0; row < 5000; ++row) {
        for (int i = 0; i < 3; ++i) {
            texts.emplace_back(length(random), static_cast<char>('a' + static_cast<char>(row % 26)));
            rows.addText(texts.back());
        }
        rows.endRow();
    }
    for (std::size_t at = 0; at < texts.size(); ++at) {
        ASSERT_EQ(rows.cell(at / 3, static_cast<int>(at % 3)), texts[at]) << "seed 20260711, cell " << at;
    }
}

TEST(Recordset, HoldsATextOfManyMegabytes) {
    const std::string large(9'000'000, 'x');
    Recordset rows({{"a", ColumnType::binary}});
    rows.addText(large);
    rows.endRow();
    EXPECT_EQ(rows.cell(0, 0)->size(), large.size());
}

TEST(Recordset, TakesAtMostSixteenBytesACellBesidesItsTexts) {
    Recordset rows({{"a", ColumnType::text}, {"b", ColumnType::text}, {"c", ColumnType::text}});
    std::size_t bytes = 0;
    std::size_t cells = 0;
    for (int row = 0; row < 100'000; ++row) {
        for (int i = 0; i < 3; ++i, ++cells) {
            const std::string text = "编号" + std::to_string(row * i);
            bytes += text.size();
            rows.addText(text);
        }
        rows.endRow();
    }
    EXPECT_LE(rows.memory(), bytes + 16 * cells);
}

TEST(Recordset, WithOneRowTakesAFewKilobytes) { EXPECT_LT(people().memory(), 8192U); }

}  // namespace
}  // namespace orvenmod::store
