// The files are read back by LibreOffice, sheet by sheet.
#include "platform/sheet/sheetwriter.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <future>

#include "support/machinelimits.h"
#include "support/spreadsheet.h"
#include "support/temporary.h"

namespace orvenmod::platform {
namespace {

namespace fs = std::filesystem;

using test::Reading;
using Rows = std::vector<std::vector<std::string>>;

class SheetWriterTest : public testing::TestWithParam<std::string> {
protected:
    std::string path() const { return folder_.file("list." + GetParam()); }

    std::unique_ptr<SheetWriter> writerTo(const std::string& path, const SheetLayout& layout) const {
        return GetParam() == "xls" ? newXlsWriter(path, layout) : newXlsxWriter(path, layout);
    }
    std::unique_ptr<SheetWriter> writer(const SheetLayout& layout) const { return writerTo(path(), layout); }

    Rows readBack(int sheet = 1, Reading reading = Reading::values) const {
        return test::readSpreadsheet(path(), reading, sheet);
    }
    auto files() const { return std::distance(fs::directory_iterator(folder_.path()), {}); }

    test::TemporaryFolder folder_;
};

SheetLayout twoColumns() {
    return {.name = "货品",
            .columns = {{.title = "代码", .width = 2000, .format = "@"},
                        {.title = "数量", .alignment = Alignment::right, .width = 1500, .format = "#,##0.00"}}};
}

TEST_P(SheetWriterTest, keepsCodesAsTextsAndNumbersAsNumbers) {
    auto sheet = writer(twoColumns());
    sheet->addRow({{"007"}, {"1234.5", true}});
    sheet->addRow({{"01.001"}, {"", true}});
    sheet->addRow({{"客户"}, {"-3", true}});
    sheet->finish();
    EXPECT_EQ(readBack(), (Rows{{"代码", "数量"}, {"007", "1234.5"}, {"01.001", ""}, {"客户", "-3"}}));
    EXPECT_EQ(readBack(1, Reading::asShown)[1][1], "1,234.50");
}

TEST_P(SheetWriterTest, takesATextInANumberColumnAsAText) {
    auto sheet = writer(twoColumns());
    sheet->addRow({{"1"}, {"约3", true}});
    sheet->finish();
    EXPECT_EQ(readBack()[1], (std::vector<std::string>{"1", "约3"}));
}

TEST_P(SheetWriterTest, takesATextThatLooksLikeAFormulaAsAText) {
    const std::vector<std::string> texts = {"=1+1", "+1+1", "-1+1", "@SUM(1)", "=cmd|' /C calc'!A0", "http://a"};
    auto sheet = writer({.name = "x", .columns = {{.title = "=2+2", .format = "@"}, {.title = "b"}}});
    for (const std::string& text : texts)
        sheet->addRow({{text}, {text, true}});
    sheet->finish();
    const Rows rows = readBack();
    ASSERT_EQ(rows.size(), 1 + texts.size());
    EXPECT_EQ(rows[0][0], "=2+2");
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(rows[i + 1], (std::vector<std::string>{texts[i], texts[i]}));
}

TEST_P(SheetWriterTest, keepsLongTextsQuotesLineEndsAndEmoji) {
    std::string longest;
    for (int i = 0; i < 32767; ++i)
        longest += i % 100 == 0 ? "长" : "x";
    std::string tooLong(40000, 'y');
    auto sheet = writer({.name = "文本", .columns = {{.title = "a", .format = "@"}, {.title = "b", .format = "@"}}});
    sheet->addRow({{longest}, {"say \"hi\", 😀"}});
    sheet->addRow({{tooLong}, {"first\nsecond"}});
    sheet->finish();
    const Rows rows = readBack();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[1], (std::vector<std::string>{longest, "say \"hi\", 😀"}));
    EXPECT_EQ(rows[2], (std::vector<std::string>{std::string(32767, 'y'), "first\nsecond"}));
}

TEST_P(SheetWriterTest, opensWithEveryControlCharacterInACell) {
    std::string controls = "a";
    for (char c = 1; c < 0x20; ++c)
        controls += c;
    controls += "z";
    auto sheet = writer({.name = "x", .columns = {{.title = "t", .format = "@"}, {.title = "after"}}});
    sheet->addRow({{controls}, {"next"}});
    sheet->finish();
    const Rows rows = readBack();
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1][0].front(), 'a');
    EXPECT_EQ(rows[1][0].back(), 'z');
    EXPECT_EQ(rows[1][1], "next");
}

TEST_P(SheetWriterTest, opensWithBytesThatAreNoTextAndCharactersThatNoSheetTakes) {
    const std::vector<std::string> texts = {"a\xFFz", "a\xE5\xAEz", "a\xED\xA0\x80z", "a\xEF\xBF\xBFz", "a_x0041_z"};
    auto sheet = writer({.name = "x\xFF", .columns = {{.title = "t\xFF", .format = "@"}, {.title = "after"}}});
    for (const std::string& text : texts)
        sheet->addRow({{text}, {"next"}});
    sheet->finish();
    const Rows rows = readBack();
    ASSERT_EQ(rows.size(), 1 + texts.size());
    for (std::size_t row = 1; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row][0].front(), 'a');
        EXPECT_EQ(rows[row][0].back(), 'z');
        EXPECT_EQ(rows[row][1], "next");
    }
    EXPECT_EQ(rows.back()[0], "a_x0041_z");
}

TEST_P(SheetWriterTest, breaksManyDifferentTextsOverRecords) {
    auto sheet = writer({.name = "x", .columns = {{.title = "t", .format = "@"}}});
    Rows expected = {{"t"}};
    for (int i = 0; i < 5000; ++i) {
        const std::string text = "货品编号" + std::to_string(i) + std::string(static_cast<std::size_t>(i % 37), 'k');
        expected.push_back({text});
        sheet->addRow({{text}});
    }
    sheet->finish();
    EXPECT_EQ(readBack(), expected);
}

TEST_P(SheetWriterTest, writesAnEmptyList) {
    auto sheet = writer(twoColumns());
    sheet->finish();
    EXPECT_EQ(readBack(), (Rows{{"代码", "数量"}}));
}

TEST_P(SheetWriterTest, writesAListWithoutColumns) {
    auto sheet = writer({.name = "", .columns = {}});
    sheet->addRow({});
    sheet->finish();
    EXPECT_GT(fs::file_size(path()), 0U);
}

TEST_P(SheetWriterTest, leavesNothingWithoutFinish) {
    writer(twoColumns())->addRow({{"1"}, {"2", true}});
    EXPECT_EQ(files(), 0);
}

TEST_P(SheetWriterTest, leavesNothingAndNoFileOpenWhereItIsCompletedInVain) {
    const auto openFiles = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); };
    const auto before = openFiles();
    for (const bool completed : {false, true}) {
        auto sheet = writer(twoColumns());
        for (int i = 0; i < 100; ++i)
            sheet->addRow({{"编号"}, {"2", true}});
        if (completed) sheet->complete();
    }
    EXPECT_EQ(files(), 0);
    EXPECT_EQ(openFiles(), before);
}

TEST_P(SheetWriterTest, isCompletedWhileItsCallerGoesOn) {
    auto sheet = writer(twoColumns());
    sheet->addRow({{"1"}, {"2", true}});
    int calls = 0;
    EXPECT_TRUE(completeMeanwhile(*sheet, [&] { return ++calls > 0; }));
    EXPECT_GE(calls, 1);
    EXPECT_EQ(files(), 1) << "completed, and not under its name yet";
    sheet->commit();
    EXPECT_EQ(readBack(), (Rows{{"代码", "数量"}, {"1", "2"}}));
}

/// Ends only when somebody went on meanwhile, and then fails.
class FailingSheet : public SheetWriter {
public:
    explicit FailingSheet(std::future<void> wentOn) : wentOn_(std::move(wentOn)) {}
    void addRow(const std::vector<SheetCell>&) override {}
    void complete() override {
        wentOn_.wait();
        throw std::runtime_error("磁盘已满");
    }
    void commit() override {}

private:
    std::future<void> wentOn_;
};

TEST(SheetWriterThread, failsForTheCallerWhoWentOnMeanwhile) {
    std::promise<void> wentOn;
    FailingSheet sheet(wentOn.get_future());
    int calls = 0;
    const auto meanwhile = [&] {
        if (++calls == 1) wentOn.set_value();
        return true;
    };
    EXPECT_THROW(completeMeanwhile(sheet, meanwhile), std::runtime_error);
    EXPECT_GE(calls, 1);
}

TEST_P(SheetWriterTest, refusesAFolderAndAMissingFolder) {
    fs::create_directory(path());
    EXPECT_THROW(writer(twoColumns()), std::runtime_error);
    EXPECT_THROW(writerTo(folder_.file("missing/list"), twoColumns()), std::runtime_error);
    EXPECT_EQ(files(), 1);
}

TEST_P(SheetWriterTest, leavesTheOldFileWhereTheDiskIsFull) {
    std::ofstream(path()) << "old";
    {
        const test::FullDisk full(8192);
        EXPECT_THROW(
            {
                auto sheet = writer(twoColumns());
                for (int i = 0; i < 20000; ++i)
                    sheet->addRow({{"编号" + std::to_string(i * 7919)}, {"2.5", true}});
                sheet->finish();
            },
            std::runtime_error);
    }
    std::string content;
    std::ifstream(path()) >> content;
    EXPECT_EQ(content, "old");
    EXPECT_EQ(files(), 1);
}

TEST_P(SheetWriterTest, showsTheHeadingInBoldAndCellsInTheFormatOfTheirColumn) {
    auto sheet = writer({.name = "货品",
                         .columns = {{.title = "代码", .width = 2000, .format = "@"},
                                     {.title = "名称", .alignment = Alignment::left, .width = 4000, .format = "@"},
                                     {.title = "序号", .width = 1000, .format = "@", .hidden = true},
                                     {.title = "数量", .alignment = Alignment::right, .format = "#,##0.000"},
                                     {.title = "等级", .alignment = Alignment::centre, .format = "#,##0"}}});
    sheet->addRow({{"007"}, {"螺丝"}, {"1"}, {"1234.5", true}, {"12", true}});
    sheet->finish();
    const test::SheetLook look = test::readLook(path());
    ASSERT_EQ(look.rows.size(), 2U);
    for (const test::CellLook& title : look.rows[0])
        EXPECT_EQ(title, (test::CellLook{.alignment = "center", .format = "", .number = "", .bold = true}));
    EXPECT_EQ(look.rows[1],
              (std::vector<test::CellLook>{{.alignment = "left", .format = "@", .number = ""},
                                           {.alignment = "left", .format = "@", .number = ""},
                                           {.alignment = "right", .format = "#,##0.000", .number = "1234.5"},
                                           {.alignment = "center", .format = "#,##0", .number = "12"}}))
        << "the hidden column isn't shown";
    EXPECT_NEAR(look.widths.at(1), 2 * look.widths.at(0), 8);
}

INSTANTIATE_TEST_SUITE_P(Formats, SheetWriterTest, testing::Values("xls", "xlsx"),
                         [](const auto& format) { return format.param; });

class XlsWriterTest : public SheetWriterTest {};

TEST_P(XlsWriterTest, goesOnInFurtherSheetsWhereOneIsFull) {
    auto sheet = writer(twoColumns());
    for (int i = 1; i <= 70000; ++i) {
        const std::string code = std::to_string(i);
        sheet->addRow({{code}, {code, true}});
    }
    sheet->finish();
    const Rows first = readBack(1);
    const Rows second = readBack(2);
    ASSERT_EQ(first.size(), 65536U);
    EXPECT_EQ(first.back(), (std::vector<std::string>{"65535", "65535"}));
    ASSERT_EQ(second.size(), 1U + 70000U - 65535U);
    EXPECT_EQ(second[0], (std::vector<std::string>{"代码", "数量"}));
    EXPECT_EQ(second[1], (std::vector<std::string>{"65536", "65536"}));
}

TEST_P(XlsWriterTest, refusesMoreColumnsThanASheetHolds) {
    EXPECT_THROW(writer({.name = "x", .columns = std::vector<SheetColumn>(257)}), std::runtime_error);
}

INSTANTIATE_TEST_SUITE_P(Formats, XlsWriterTest, testing::Values("xls"));

class XlsxWriterTest : public SheetWriterTest {};

// A row of a single letter: the sheet's end is what matters, and a million rows are read back.
TEST_P(XlsxWriterTest, goesOnInFurtherSheetsWhereOneIsFull) {
    constexpr int kRows = 1048576 + 3;
    auto sheet = writer({.name = "货品", .columns = {{.title = "t"}}});
    for (int i = 1; i <= kRows; ++i)
        sheet->addRow({{i < 1048575 ? "x" : i == 1048575 ? "last" : "more"}});
    sheet->finish();
    EXPECT_EQ(readBack(2), (Rows{{"t"}, {"more"}, {"more"}, {"more"}, {"more"}}));
}

INSTANTIATE_TEST_SUITE_P(Formats, XlsxWriterTest, testing::Values("xlsx"));

TEST(SpreadsheetReader, aReaderThatFailsShowsItsLog) {
    EXPECT_NONFATAL_FAILURE(test::readSpreadsheet("/no/such/file.xls"), "source file could not be loaded");
}

}  // namespace
}  // namespace orvenmod::platform
