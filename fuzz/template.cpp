// The template of a printed list: any text is a template, or refused with its line; and pages of any template can be
// laid out.
#include "platform/report/template.h"

#include <stdexcept>
#include <string>

#include "fuzz/fuzz.h"
#include "platform/report/reportpages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvenmod::platform::report;
    ReportData report;
    try {
        report.page = parseTemplate(std::string(orvenmod::fuzz::textOf(data, size)));
    } catch (const std::runtime_error& refusal) {
        orvenmod::fuzz::check(*refusal.what() != '\0', "a refusal has words");
        return 0;
    }
    report.title = "货品";
    report.fields = {{"a", {}, ""}, {"b", {}, "#,##0.00"}};
    report.columns = {{.name = "a", .title = "代码", .field = 1, .width = 40},
                      {.name = "b", .title = "数量", .field = 2, .width = 400}};
    report.records.clear(2);
    for (int row = 0; row < 100; ++row)
        report.records.add({"01", "1234.5"});
    const ReportPages pages(report, report.page.paper, "2026-11-20");
    orvenmod::fuzz::check(pages.count() >= 1, "there is a page");
    pages.page(0);
    pages.page(pages.count() - 1);
    return 0;
}
