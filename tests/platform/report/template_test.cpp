// What a template may say, and what is told of one that is wrong.
#include "platform/report/template.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "support/machinelimits.h"
#include "support/sourcefolder.h"
#include "support/temporary.h"

namespace orvenmod::platform::report {
namespace {

std::string failureOf(const std::string& content) {
    try {
        parseTemplate(content);
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "";
}

TEST(Template, tellsPageBandsAndTexts) {
    const Template read = parseTemplate(
        "# a comment\n"
        "report 1\r\n"
        "page A5 landscape\n"
        "margins 10 11 12 13.5\n"
        "font 8 \"Noto Serif CJK SC\"\n"
        "columns break\n"
        "title 7\nrow 6\n"
        "header 20\n"
        "text fTitle 0 1 180 10 size 16 bold centre \"说 \"\"货品\"\"\"  # and another\n"
        "header 5\n"
        "footer 6\n"
        "text - 1 2 3 4 right \"{page}\"\n");
    EXPECT_EQ(read.paper, (Paper{210, 148, 10, 11, 12, 13.5}));
    EXPECT_EQ(read.points, 8);
    EXPECT_EQ(read.family, "Noto Serif CJK SC");
    EXPECT_EQ(read.wideColumns, WideColumns::breakPages);
    EXPECT_EQ(read.titleHeight, 7);
    EXPECT_EQ(read.rowHeight, 6);
    ASSERT_EQ(read.headers.size(), 2U);
    const TemplateText& title = read.headers[0].texts.at(0);
    EXPECT_EQ(title.name, "fTitle");
    EXPECT_EQ(title.text, "说 \"货品\"");
    EXPECT_EQ(title.points, 16);
    EXPECT_TRUE(title.bold);
    EXPECT_EQ(title.alignment, TextAlignment::centre);
    EXPECT_EQ(read.footer.texts.at(0).name, "");
    EXPECT_EQ(read.footer.texts.at(0).points, 8) << "the page's own";
}

TEST(Template, ofOneLineHasThePageThatNeedsNoWords) {
    const Template read = parseTemplate("report 1");
    EXPECT_EQ(read.paper.width, 210);
    EXPECT_TRUE(read.headers.empty());
}

TEST(Template, takesAPaperOfAnySize) { EXPECT_EQ(parseTemplate("report 1\npage 241 140").paper.width, 241); }

struct Mistake {
    const char* content;
    const char* message;
};

class WrongTemplate : public testing::TestWithParam<Mistake> {};

TEST_P(WrongTemplate, isToldByLineAndByWhatWasExpected) {
    EXPECT_EQ(failureOf(GetParam().content), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, WrongTemplate,
    testing::Values(
        Mistake{"", "报表模板第 1 行：应为“report 1”，实为空文件"},
        Mistake{"# nothing\n\n", "报表模板第 1 行：应为“report 1”，实为空文件"},
        Mistake{"page A4", "报表模板第 1 行：应为“report 1”，实为“page”"},
        Mistake{"\nreport 2", "报表模板第 2 行：应为“report 1”，实为“2”"},
        Mistake{"report 1\ncolour red",
                "报表模板第 2 行：应为page、margins、font、columns、title、row、header、footer 或 text，实为“colour”"},
        Mistake{"report 1\npage A9", "报表模板第 2 行：应为纸张 A3、A4、A5、B5、Letter 或宽和高，实为“A9”"},
        Mistake{"report 1\npage A4 sideways", "报表模板第 2 行：应为方向 portrait 或 landscape，实为“sideways”"},
        Mistake{"report 1\npage 300", "报表模板第 2 行：应为纸高（20 到 1000 的数），实为行尾"},
        Mistake{"report 1\npage 19 100", "报表模板第 2 行：应为纸宽（20 到 1000 的数），实为“19”"},
        Mistake{"report 1\npage 100 1001", "报表模板第 2 行：应为纸高（20 到 1000 的数），实为“1001”"},
        Mistake{"report 1\npage", "报表模板第 2 行：应为纸张 A3、A4、A5、B5、Letter 或宽和高，实为行尾"},
        Mistake{"report 1\nmargins", "报表模板第 2 行：应为左边距（0 到 1000 的数），实为行尾"},
        Mistake{"report 1\nmargins 1 2 \"3\" 4", "报表模板第 2 行：应为右边距（0 到 1000 的数），实为“3”"},
        Mistake{"report 1\nfont big", "报表模板第 2 行：应为字号（4 到 1000 的数），实为“big”"},
        Mistake{"report 1\nfont 9 Noto", "报表模板第 2 行：应为行尾，实为“Noto”"},
        Mistake{"report 1\ntitle 1", "报表模板第 2 行：应为标题行高（2 到 1000 的数），实为“1”"},
        Mistake{"report 1\nheader", "报表模板第 2 行：应为报表头高（0 到 1000 的数），实为行尾"},
        Mistake{"report 1\nfooter 8mm", "报表模板第 2 行：应为页脚高（0 到 1000 的数），实为“8mm”"},
        Mistake{"report 1\nheader 9\ntext", "报表模板第 3 行：应为文本框名称，实为行尾"},
        Mistake{"report 1\nheader 9\ntext a x 0 9 9", "报表模板第 3 行：应为左（0 到 1000 的数），实为“x”"},
        Mistake{"report 1\nheader 9\ntext a 0 1,5 9 9", "报表模板第 3 行：应为上（0 到 1000 的数），实为“1,5”"},
        Mistake{"report 1\nheader 9\ntext a 0 0 1e9 9", "报表模板第 3 行：应为宽（1 到 1000 的数），实为“1e9”"},
        Mistake{"report 1\nheader 9\ntext a 0 0 9 9 size 3", "报表模板第 3 行：应为字号（4 到 1000 的数），实为“3”"},
        Mistake{"report 1\nheader 9\ntext a 0 0 9 9 \"x\" bold", "报表模板第 3 行：应为行尾，实为“bold”"},
        Mistake{"Report 1", "报表模板第 1 行：应为“report 1”，实为“Report”"},
        Mistake{"report 1\nreport 1",
                "报表模板第 2 行：应为page、margins、font、columns、title、row、header、footer 或 text，实为“report”"},
        Mistake{"report 1\nmargins 1 2 3", "报表模板第 2 行：应为下边距（0 到 1000 的数），实为行尾"},
        Mistake{"report 1\nmargins 1 -2 3 4", "报表模板第 2 行：应为上边距（0 到 1000 的数），实为“-2”"},
        Mistake{"report 1\nrow nan", "报表模板第 2 行：应为行高（2 到 1000 的数），实为“nan”"},
        Mistake{"report 1\nrow 6 7", "报表模板第 2 行：应为行尾，实为“7”"},
        Mistake{"report 1\nrow 6\nrow 7", "报表模板第 3 行：“row”重复"},
        Mistake{"report 1\ncolumns wrap", "报表模板第 2 行：应为fit 或 break，实为“wrap”"},
        Mistake{"report 1\ntext a 0 0 9 9", "报表模板第 2 行：应先有 header 或 footer，实为“text”"},
        Mistake{"report 1\nheader 9\ntext a 0 0 9 0", "报表模板第 3 行：应为高（1 到 1000 的数），实为“0”"},
        Mistake{"report 1\nheader 9\ntext a 0 0 9 9\ntext a 0 0 9 9", "报表模板第 4 行：文本框名称“a”重复"},
        Mistake{"report 1\nheader 9\ntext a 0 0 9 9 \"open", "报表模板第 3 行：应为右引号，实为行尾"},
        Mistake{"report 1\nheader 9\ntext a 0 0 9 9 loud",
                "报表模板第 3 行：应为size、bold、left、centre、right 或引号中的文字，实为“loud”"},
        Mistake{"report 1\nfont 9 \xFF\xFE", "报表模板第 2 行：应为 UTF-8 文本"},
        Mistake{"report 1\nheader 300",
                "报表模板第 2 行：边距、报表头、页脚和标题行之间应留有一行的位置，实为纸张太小"}));

std::string loadFailureOf(const std::string& path) {
    try {
        loadTemplate(path);
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "";
}

TEST(TemplateFile, thatIsMissingOrAFolderIsTold) {
    const test::TemporaryFolder folder;
    for (const std::string& path : {folder.file("Report3.grf"), folder.path()})
        EXPECT_EQ(loadFailureOf(path), "找不到报表模板：" + path);
}

TEST(TemplateFile, thatIsBinaryOrHugeIsTold) {
    const test::TemporaryFolder folder;
    const std::string path = folder.file("Report3.grf");
    std::ofstream(path) << std::string("\0\1\2", 3);
    EXPECT_EQ(loadFailureOf(path), "报表模板第 1 行：应为 UTF-8 文本\n" + path);
    std::ofstream(path) << std::string(2U << 20U, '#');
    EXPECT_EQ(loadFailureOf(path), "文件太大，不是报表模板：" + path);
}

TEST(TemplateFile, thatMayNotBeReadIsTold) {
    const test::TemporaryFolder folder;
    const std::string path = folder.file("Report3.grf");
    std::ofstream(path) << "report 1\n";
    std::filesystem::permissions(path, std::filesystem::perms::none);
    const test::BoundByPermissions bound;
    EXPECT_EQ(loadFailureOf(path), "报表模板无法读取：" + path);
}

TEST(TemplateFile, thatIsEmptyIsTold) {
    const test::TemporaryFolder folder;
    const std::string path = folder.file("Report3.grf");
    std::ofstream(path).flush();
    EXPECT_EQ(loadFailureOf(path), "报表模板第 1 行：应为“report 1”，实为空文件\n" + path);
}

TEST(TemplateFile, isReadByASuitesPathWithBackslashes) {
    const test::TemporaryFolder folder;
    std::ofstream(folder.file("Report3.grf")) << "report 1\nrow 9\n";
    EXPECT_EQ(loadTemplate(folder.path() + "\\Report3.grf").rowHeight, 9);
}

TEST(TemplateFile, ofTheSampleSuiteHasTheControlsOfTheList) {
    const Template read = loadTemplate(test::sourceFile("examples/host/Report3.grf"));
    ASSERT_FALSE(read.headers.empty());
    ASSERT_GE(read.headers[0].texts.size(), 2U);
    EXPECT_EQ(read.headers[0].texts[0].name + " " + read.headers[0].texts[1].name, "fTitle fbiller");
}

}  // namespace
}  // namespace orvenmod::platform::report
