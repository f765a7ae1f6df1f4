#include "platform/report/gatheredreport.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace orvenmod::platform::report {

namespace {

constexpr double kMillimetresPerCentimetre = 10;

TextAlignment toText(ReportAlignment alignment) {
    return alignment == ReportAlignment::centre ? TextAlignment::centre : TextAlignment::right;
}

}  // namespace

void GatheredReport::loadFromFile(const std::string& path) {
    Template page = loadTemplate(path);
    data_ = ReportData();
    data_.page = std::move(page);
    recordOpen_ = false;
}

void GatheredReport::setHeaderText(int header, const std::string& control, const std::string& text) {
    auto& headers = data_.page.headers;
    const auto number = static_cast<std::size_t>(header) - 1;
    if (number < headers.size()) {
        auto& texts = headers[number].texts;
        const auto found = std::ranges::find(texts, control, &TemplateText::name);
        if (found != texts.end()) {
            found->text = text;
            found->literal = true;
            return;
        }
    }
    throw std::runtime_error("报表模板的第 " + std::to_string(header) + " 个报表头中没有文本框“" + control + "”");
}

ReportField& GatheredReport::field(int number) { return data_.fields.at(static_cast<std::size_t>(number) - 1); }

void GatheredReport::addField(const std::string& name, ReportFieldType type) {
    if (data_.records.count() != 0) throw std::logic_error("a field is added behind the first record");
    data_.fields.push_back({name, type, ""});
    data_.records.clear(data_.fields.size());
}

void GatheredReport::setFieldFormat(int number, const std::string& format) { field(number).format = format; }

void GatheredReport::addColumn(const std::string& name, const std::string& title, int number, double width) {
    field(number);
    data_.columns.push_back(
        {.name = name, .title = title, .field = number, .width = std::max(width, 0.0) * kMillimetresPerCentimetre});
}

void GatheredReport::setTitleAlignment(int number, ReportAlignment alignment) {
    column(number).titleAlignment = toText(alignment);
}

void GatheredReport::setContentAlignment(int number, ReportAlignment alignment) {
    column(number).contentAlignment = toText(alignment);
}

void GatheredReport::hideColumn(int number) { column(number).hidden = true; }

void GatheredReport::appendRecord() {
    record_.assign(data_.fields.size(), "");
    recordOpen_ = true;
}

void GatheredReport::setFieldText(int number, const std::string& text) {
    if (!recordOpen_) throw std::logic_error("a field is set outside a record");
    record_.at(static_cast<std::size_t>(number) - 1) = text;
}

void GatheredReport::postRecord() {
    if (!recordOpen_) throw std::logic_error("no record to post");
    data_.records.add(record_);
    recordOpen_ = false;
}

ReportData GatheredReport::gather() {
    data_ = ReportData();
    recordOpen_ = false;
    initialize.raise();
    fetchRecord.raise();
    return std::exchange(data_, ReportData());
}

}  // namespace orvenmod::platform::report
