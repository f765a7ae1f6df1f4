// How records come to stand on pages.
#include "platform/report/reportpages.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "platform/report/gatheredreport.h"

namespace orvenmod::platform::report {
namespace {

constexpr const char* kPage =
    "report 1\npage 100 100\nmargins 10 10 10 10\ntitle 10\nrow 10\n"
    "header 20\ntext fTitle 0 0 80 10 \"{title}\"\nfooter 10\ntext - 0 0 80 5 \"{page}/{pages} {date}\"\n";

ReportData dataOf(const std::string& page, int columns, double width, int records) {
    ReportData data;
    data.page = parseTemplate(page);
    data.title = "货品打印";
    for (int i = 0; i < columns; ++i) {
        data.fields.push_back({"c" + std::to_string(i), ReportFieldType::text, ""});
        data.columns.push_back({.name = "", .title = "t" + std::to_string(i), .field = i + 1, .width = width});
    }
    data.records.clear(data.fields.size());
    for (int i = 0; i < records; ++i)
        data.records.add(std::vector<std::string>(static_cast<std::size_t>(columns), "r" + std::to_string(i)));
    return data;
}

std::vector<std::string> textsOf(const Page& page) {
    std::vector<std::string> texts;
    for (const PlacedText& each : page.texts)
        texts.push_back(each.text);
    return texts;
}

ReportPages pagesOf(const ReportData& data) { return {data, data.page.paper, "2026-11-20"}; }

using Texts = std::vector<std::string>;

TEST(ReportPages, repeatTitlesAndFooterButTheHeaderStandsOnTheFirst) {
    const ReportData data = dataOf(kPage, 1, 20, 10);
    const ReportPages pages = pagesOf(data);
    ASSERT_EQ(pages.count(), 2U);  // 4 rows under the header, 6 without
    EXPECT_EQ(textsOf(pages.page(0)), (Texts{"货品打印", "t0", "r0", "r1", "r2", "r3", "1/2 2026-11-20"}));
    EXPECT_EQ(textsOf(pages.page(1)), (Texts{"t0", "r4", "r5", "r6", "r7", "r8", "r9", "2/2 2026-11-20"}));
    EXPECT_THROW(pages.page(2), std::out_of_range);
}

TEST(ReportPages, holdEveryRecordOnceAtAnyCount) {
    for (int records = 0; records < 40; ++records) {
        const ReportData data = dataOf(kPage, 1, 20, records);
        const ReportPages pages = pagesOf(data);
        Texts rows;
        for (std::size_t page = 0; page < pages.count(); ++page) {
            for (const std::string& text : textsOf(pages.page(page))) {
                if (text[0] == 'r') rows.push_back(text);
            }
            for (const Box& box : pages.page(page).frames)
                EXPECT_LE(box.top + box.height, 80.001) << "above the footer";
        }
        ASSERT_EQ(rows.size(), static_cast<std::size_t>(records));
        for (int i = 0; i < records; ++i)
            EXPECT_EQ(rows[static_cast<std::size_t>(i)], "r" + std::to_string(i));
    }
}

TEST(ReportPages, ofAnEmptyListAreOneWithHeaderAndTitles) {
    const ReportData data = dataOf(kPage, 2, 20, 0);
    const ReportPages pages = pagesOf(data);
    ASSERT_EQ(pages.count(), 1U);
    EXPECT_EQ(textsOf(pages.page(0)), (Texts{"货品打印", "t0", "t1", "1/1 2026-11-20"}));
}

TEST(ReportPages, ofAListWithoutColumnsAreOneWithTheHeader) {
    const ReportData data = dataOf(kPage, 0, 20, 0);
    EXPECT_EQ(textsOf(pagesOf(data).page(0)), (Texts{"货品打印", "1/1 2026-11-20"}));
    ReportData hidden = dataOf(kPage, 2, 20, 50);
    for (ReportColumn& column : hidden.columns)
        column.hidden = true;
    EXPECT_EQ(pagesOf(hidden).count(), 1U);
}

TEST(ReportPages, shrinkColumnsThatAreTooWideToFit) {
    const ReportData data = dataOf(kPage, 4, 40, 1);
    const ReportPages pages = pagesOf(data);
    ASSERT_EQ(pages.count(), 1U);
    const Page page = pages.page(0);
    ASSERT_EQ(page.shaded.size(), 4U);
    EXPECT_NEAR(page.shaded[3].left + page.shaded[3].width, 90, 0.001);
    EXPECT_NEAR(page.texts[1].points, 9 * 0.8, 0.001);
}

TEST(ReportPages, breakColumnsOverPagesByTheTemplatesWord) {
    const ReportData data = dataOf(std::string(kPage) + "columns break\n", 5, 30, 5);
    const ReportPages pages = pagesOf(data);
    ASSERT_EQ(pages.count(), 6U);
    EXPECT_EQ(textsOf(pages.page(0))[1], "t0");
    EXPECT_EQ(textsOf(pages.page(1))[0], "t2") << "the header isn't repeated";
    EXPECT_EQ(pages.page(0).shaded[0].top, pages.page(1).shaded[0].top) << "rows of one record line up";
    EXPECT_EQ(textsOf(pages.page(5)), (Texts{"t4", "r4", "6/6 2026-11-20"}));
}

TEST(ReportPages, cutAColumnWiderThanThePaperToItsWidth) {
    const ReportData data = dataOf(std::string(kPage) + "columns break\n", 2, 500, 1);
    const ReportPages pages = pagesOf(data);
    EXPECT_EQ(pages.count(), 2U);
    EXPECT_EQ(pages.page(0).shaded[0].width, 80);
}

TEST(ReportPages, showControlCharactersAsBlanks) {
    ReportData data = dataOf(kPage, 1, 20, 0);
    data.records.add({"a\nb\tc\x01"});
    EXPECT_EQ(textsOf(pagesOf(data).page(0))[2], "a b c ");
}

TEST(ReportPages, ofAHundredThousandRecordsAreAskedForOneByOne) {
    const ReportData data = dataOf(kPage, 10, 8, 100000);
    const ReportPages pages = pagesOf(data);
    const Page last = pages.page(pages.count() - 1);
    EXPECT_EQ(pages.count(), 1U + (100000U - 4U + 5U) / 6U);
    EXPECT_EQ(textsOf(last).end()[-2], "r99999");
}

class Gathered : public GatheredReport {
public:
    void printPreview() override { data = gather(); }
    void print() override { data = gather(); }
    ReportData data;
};

class Gathering : public testing::Test {
protected:
    void fill(const std::function<void(Report&)>& define, const std::vector<Texts>& records) {
        report.initialize = [&] { define(report); };
        report.fetchRecord = [&] {
            for (const Texts& record : records) {
                report.appendRecord();
                for (std::size_t i = 0; i < record.size(); ++i)
                    report.setFieldText(static_cast<int>(i) + 1, record[i]);
                report.postRecord();
            }
        };
        report.print();
    }
    std::string shown(std::size_t record, std::size_t column) const {
        return report.data.shown(record, report.data.columns.at(column));
    }

    Gathered report;
};

TEST_F(Gathering, formatsNumbersAndLeavesWhatIsNone) {
    fill(
        [](Report& to) {
            to.addField("数量", ReportFieldType::number);
            to.setFieldFormat(1, "#,##0.00");
            to.addColumn("数量", "数量", 1, 2.5);
        },
        {{"1,244.5"}, {""}, {"约3"}, {"-0.125"}, {"1,2,x"}});
    EXPECT_EQ(shown(0, 0), "1,244.50");
    EXPECT_EQ(shown(1, 0), "");
    EXPECT_EQ(shown(2, 0), "约3");
    EXPECT_EQ(shown(3, 0), "-0.13");
    EXPECT_EQ(shown(4, 0), "1,2,x");
    EXPECT_EQ(report.data.columns[0].width, 25);
}

TEST_F(Gathering, keepsTwoFieldsOfOneNameApart) {
    fill(
        [](Report& to) {
            for (int field = 1; field <= 2; ++field) {
                to.addField("名称", ReportFieldType::text);
                to.addColumn("名称", "名称", field, 2);
            }
        },
        {{"a", "b"}});
    EXPECT_EQ(shown(0, 0) + shown(0, 1), "ab");
}

TEST_F(Gathering, startsAfreshEachTime) {
    const auto define = [](Report& to) {
        to.addField("a", ReportFieldType::text);
        to.addColumn("a", "a", 1, 1);
    };
    fill(define, {{"1"}, {"2"}});
    fill(define, {{"3"}});
    EXPECT_EQ(report.data.records.count(), 1U);
    EXPECT_EQ(report.data.columns.size(), 1U);
}

TEST_F(Gathering, refusesWhatIsntThere) {
    EXPECT_THROW(report.setFieldFormat(1, ""), std::out_of_range);
    EXPECT_THROW(report.addColumn("a", "a", 1, 1), std::out_of_range);
    EXPECT_THROW(report.hideColumn(0), std::out_of_range);
    EXPECT_THROW(report.postRecord(), std::logic_error);
    EXPECT_THROW(report.setHeaderText(1, "fTitle", ""), std::runtime_error);
}

}  // namespace
}  // namespace orvenmod::platform::report
