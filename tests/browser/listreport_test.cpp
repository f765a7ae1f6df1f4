// Preview and print of the list: what is handed to the report engine.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "browser/browsertest.h"
#include "platform/memory/memorytoolkit.h"
#include "platform/report/reportpages.h"
#include "support/sourcefolder.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;
namespace report = platform::report;
using platform::ListGrid;
using platform::ReportFieldType;
using platform::memory::Output;
using platform::memory::ShownReport;

class ListReportTest : public BrowserTest {
protected:
    ListReportTest() {
        fs::copy_file(sourceFile("examples/host/Report3.grf"), templateFile());
        stage.set("SystemLogin", "gLoginUserName", "张会计");
    }

    std::string templateFile() { return database().folder().file("Report3.grf"); }
    void writeTemplate(const std::string& text) { std::ofstream(templateFile()) << text; }
    const std::vector<ShownReport>& reports() {
        return dynamic_cast<platform::memory::MemoryToolkit&>(script().toolkit()).reports();
    }
    /// The last report that was shown.
    const report::ReportData& shown() { return reports().back().data; }
    void preview(const Steps& before = [](User&) {}) {
        stage.open(kPicker, [&](User& user) {
            before(user);
            user.clickTool("Preview");
        });
        ASSERT_FALSE(reports().empty());
    }
    /// All cells of the shown columns.
    Rows printedRows() {
        Rows rows;
        for (std::size_t record = 0; record < shown().records.count(); ++record) {
            rows.emplace_back();
            for (const auto& column : shown().columns) {
                if (!column.hidden) rows.back().push_back(shown().shown(record, column));
            }
        }
        return rows;
    }
    /// Presses the button, which shows the failure and leaves the window in use.
    void expectRefused(const std::string& failure) {
        stage.open(kPicker, [&](User& user) {
            for (const char* key : {"Preview", "Print"}) {
                user.answer(MessageKind::critical, failure);
                user.clickTool(key);
            }
            user.clickNode("tv1", "D14");
            EXPECT_EQ(codes(user), Texts{"02.001"});
        });
        EXPECT_EQ(script().messages().back().title, "测试套件");
        EXPECT_TRUE(reports().empty());
    }
};

TEST_F(ListReportTest, bearsTheNamesOfClassAndUser) {
    preview();
    EXPECT_EQ(reports().back().output, Output::preview);
    EXPECT_EQ(shown().title, "货品打印");
    const auto& header = shown().page.headers.at(0).texts;
    EXPECT_EQ(header.at(0).text, "货品");
    EXPECT_EQ(header.at(1).text, "打印人：张会计");
}

TEST_F(ListReportTest, hasAColumnForEveryColumnOfTheGrid) {
    stage.open(kPicker, [&](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        user.clickTool("Preview");
        const auto& columns = shown().columns;
        ASSERT_EQ(columns.size(), static_cast<std::size_t>(grid.columnCount()));
        for (int i = 0; i < grid.columnCount(); ++i) {
            const auto& column = columns[static_cast<std::size_t>(i)];
            EXPECT_EQ(column.name, grid.text(0, i));
            EXPECT_EQ(column.title, grid.text(0, i));
            EXPECT_EQ(column.field, i + 1);
            EXPECT_DOUBLE_EQ(column.width, grid.columnWidth(i) / 400.0 * 10);
            EXPECT_EQ(column.hidden, grid.columnHidden(i)) << i;
            EXPECT_EQ(column.titleAlignment, report::TextAlignment::centre);
        }
        EXPECT_TRUE(columns[0].hidden && columns[1].hidden);
        EXPECT_EQ(columns[2].contentAlignment, report::TextAlignment::left);
        EXPECT_EQ(columns[4].contentAlignment, report::TextAlignment::centre);
        EXPECT_EQ(columns[5].contentAlignment, report::TextAlignment::right);
    });
}

TEST_F(ListReportTest, handsOverTheRowsAsShownWithoutTheDatabase) {
    stage.open(kPicker, [&](User& user) {
        stage.forgetStatements();
        user.clickTool("Print");
        EXPECT_EQ(stage.statements(), Texts{});
        EXPECT_EQ(shown().records.text(0, 5), user.control<ListGrid>("vsf1").text(1, 5));
    });
    EXPECT_EQ(reports().back().output, Output::print);
    const Rows rows = printedRows();
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0], (Texts{"01.01.001", "内六角螺丝", "", "1,244.50", ""}));
    EXPECT_EQ(rows[1][3], "") << "a blanked zero is an empty text";
}

TEST_F(ListReportTest, printsTheListAsFilteredAtThatMoment) {
    preview([](User& user) { user.clickNode("tv1", "D14"); });
    ASSERT_EQ(printedRows().size(), 1U);
    EXPECT_EQ(printedRows()[0][0], "02.001");
}

TEST_F(ListReportTest, printsRowsAndColumnsInTheOrderTheyShow) {
    preview([](User& user) {
        user.clickHeading("vsf1", 2);
        user.clickHeading("vsf1", 2);
        user.dragHeading("vsf1", 5, 2);
        user.dragHeading("vsf1", 3, 5);
    });
    EXPECT_EQ(printedRows(), (Rows{{"劳保手套", "", "03", "", ""},
                                   {"墙壁开关", "5.00", "02.001", "", ""},
                                   {"螺母", "", "01.01.002", "", ""},
                                   {"内六角螺丝", "1,244.50", "01.01.001", "", ""}}));
    Texts titles;
    for (const auto& column : shown().columns) {
        if (!column.hidden) titles.push_back(column.title);
    }
    EXPECT_EQ(titles, (Texts{"名称", "库存数", "代码", "规格型号", "最低库存"}));
    EXPECT_EQ(shown().columns[3].contentAlignment, report::TextAlignment::right) << "a column takes its look along";
    EXPECT_DOUBLE_EQ(shown().columns[2].width, 100) << "of the name";
}

TEST_F(ListReportTest, ofAnEmptyListHasThePageAndNoRows) {
    preview([](User& user) {
        user.pick("PC", 2, 0);
        user.type("txtSearch", "没有这样的货品");
        user.click("cmdFind");
    });
    EXPECT_EQ(shown().records.count(), 0U);
    const report::ReportPages pages(shown(), shown().page.paper, "2026-11-20");
    ASSERT_EQ(pages.count(), 1U);
    EXPECT_EQ(pages.page(0).texts.at(0).text, "货品");
}

TEST_F(ListReportTest, showsTwoColumnsOfOneTitleEachWithItsOwnRows) {
    database().execute("update tblFindinfoEntry set fTitleName='代码' where fTypeId=6003 and fFieldName='fName'");
    preview();
    EXPECT_EQ(shown().fields[2].name + shown().fields[3].name, "代码代码");
    EXPECT_EQ(printedRows()[0][0] + "|" + printedRows()[0][1], "01.01.001|内六角螺丝");
}

TEST_F(ListReportTest, mapsTheSevenFormatsAndTakesOthersAsTexts) {
    const std::vector<std::pair<std::string, std::string>> formats = {{"#,###.##", "#,##0.00"},
                                                                      {"#,###.###", "#,##0.000"},
                                                                      {"#,###.####", "#,##0.0000"},
                                                                      {"#,###.#", "#,##0.0"},
                                                                      {"#,###.#####", "#,##0.00000"},
                                                                      {"#,###", "#,##0"},
                                                                      {"0.00", ""},
                                                                      {"#,###.######", "#,##0.000000"},
                                                                      {"yyyy-mm-dd", ""}};
    for (const auto& [list, printed] : formats) {
        database().execute("update tblFindinfoEntry set fDataFormat='" + list +
                           "' where fTypeId=6003 and fFieldName='fTimeQty'");
        preview();
        EXPECT_EQ(shown().fields[5].format, printed) << list;
        EXPECT_EQ(shown().fields[5].type, printed.empty() ? ReportFieldType::text : ReportFieldType::number) << list;
    }
}

TEST_F(ListReportTest, canBeShownAgainAndAgain) {
    stage.open(kPicker, [](User& user) {
        user.clickTool("Preview");
        user.clickTool("Print");
        user.clickTool("Preview");
    });
    ASSERT_EQ(reports().size(), 3U);
    for (const ShownReport& each : reports())
        EXPECT_EQ(each.data.records.count(), 4U);
}

TEST_F(ListReportTest, withoutTemplateIsRefused) {
    fs::remove(templateFile());
    expectRefused("找不到报表模板：" + database().folder().path() + "\\Report3.grf");
}

TEST_F(ListReportTest, withoutTheTitleControlIsRefused) {
    writeTemplate("report 1\nheader 20\ntext fbiller 0 0 50 6\n");
    expectRefused("报表模板的第 1 个报表头中没有文本框“fTitle”");
}

TEST_F(ListReportTest, withoutTheBillerControlIsRefused) {
    writeTemplate("report 1\nheader 20\ntext fTitle 0 0 50 6\nheader 10\ntext fbiller 0 0 50 6\n");
    expectRefused("报表模板的第 1 个报表头中没有文本框“fbiller”");
}

TEST_F(ListReportTest, withoutAnyHeaderIsRefused) {
    writeTemplate("report 1\n");
    expectRefused("报表模板的第 1 个报表头中没有文本框“fTitle”");
}

TEST_F(ListReportTest, withABrokenTemplateIsRefusedWithTheLine) {
    writeTemplate("report 1\npage A4 sideways\n");
    expectRefused("报表模板第 2 行：应为方向 portrait 或 landscape，实为“sideways”\n" + database().folder().path() +
                  "\\Report3.grf");
}

}  // namespace
}  // namespace orvenmod::test
