// The files are read back by LibreOffice, sheet by sheet, as comma-separated texts.
#include "platform/sheet/sheetwriter.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace orvenmod::platform {
namespace {

namespace fs = std::filesystem;

using Rows = std::vector<std::vector<std::string>>;

// RFC 4180.
Rows parseCsv(const std::string& text) {
    Rows rows;
    std::vector<std::string> row;
    std::string cell;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            if (c != '"')
                cell += c;
            else if (i + 1 < text.size() && text[i + 1] == '"')
                cell += text[++i];
            else
                quoted = false;
        } else if (c == '"') {
            quoted = true;
        } else if (c == ',' || c == '\n') {
            row.push_back(std::exchange(cell, {}));
            if (c == '\n') rows.push_back(std::exchange(row, {}));
        } else {
            cell += c;
        }
    }
    return rows;
}

class SheetWriterTest : public testing::TestWithParam<std::string> {
protected:
    SheetWriterTest() {
        std::string pattern = (fs::temp_directory_path() / "orvensheetXXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    ~SheetWriterTest() override { fs::remove_all(folder_); }

    std::string path() const { return (folder_ / ("list." + GetParam())).string(); }

    std::unique_ptr<SheetWriter> writer(const SheetLayout& layout) const {
        return GetParam() == "xls" ? newXlsWriter(path(), layout) : newXlsxWriter(path(), layout);
    }

    // Sheet numbers count from 1. Raw values where `asShown` is false.
    Rows readBack(int sheet = 1, bool asShown = false) const {
        // Filter options: separator, quote, UTF-8, first line, column formats, language, quote texts, special numbers,
        // as shown, formulas, spaces, sheet.
        const std::string options = std::string("44,34,76,1,,0,true,false,") + (asShown ? "true" : "false") +
                                    ",false,false," + std::to_string(sheet);
        const std::string command = "cd '" + folder_.string() + "' && soffice -env:UserInstallation=file://" +
                                    folder_.string() +
                                    "/profile --headless --convert-to 'csv:Text - txt - csv (StarCalc):" + options +
                                    "' list." + GetParam() + " >convert.log 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0);
        for (const auto& entry : fs::directory_iterator(folder_)) {
            if (entry.path().extension() != ".csv") continue;
            std::ifstream file(entry.path());
            std::stringstream text;
            text << file.rdbuf();
            const fs::path csv = entry.path();
            file.close();
            fs::remove(csv);
            return parseCsv(text.str());
        }
        ADD_FAILURE() << "no text file came out";
        return {};
    }

    fs::path folder_;
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
    EXPECT_EQ(readBack(1, true)[1][1], "1,234.50");
}

TEST_P(SheetWriterTest, takesATextInANumberColumnAsAText) {
    auto sheet = writer(twoColumns());
    sheet->addRow({{"1"}, {"约3", true}});
    sheet->finish();
    EXPECT_EQ(readBack()[1], (std::vector<std::string>{"1", "约3"}));
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
    EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_P(SheetWriterTest, refusesAFolderAndAMissingFolder) {
    fs::create_directory(path());
    EXPECT_THROW(writer(twoColumns()), std::runtime_error);
    fs::remove(path());
    fs::permissions(folder_, fs::perms::owner_all);
    folder_ /= "missing";
    EXPECT_THROW(writer(twoColumns()), std::runtime_error);
    folder_ = folder_.parent_path();
}

TEST_P(SheetWriterTest, leavesTheOldFileWhereTheDiskIsFull) {
    std::ofstream(path()) << "old";
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{8192, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(
        {
            auto sheet = writer(twoColumns());
            for (int i = 0; i < 20000; ++i)
                sheet->addRow({{"编号" + std::to_string(i * 7919)}, {"2.5", true}});
            sheet->finish();
        },
        std::runtime_error);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    std::string content;
    std::ifstream(path()) >> content;
    EXPECT_EQ(content, "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
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

}  // namespace
}  // namespace orvenmod::platform
