#include "platform/report/reportdata.h"

#include <algorithm>

#include "platform/numberformat.h"

namespace orvenmod::platform::report {

void Records::clear(std::size_t fields) {
    fields_ = fields;
    letters_.clear();
    starts_.clear();
}

void Records::add(const std::vector<std::string>& texts) {
    for (std::size_t field = 0; field < fields_; ++field) {
        starts_.push_back(letters_.size());
        letters_ += texts.at(field);
    }
}

std::string_view Records::text(std::size_t record, std::size_t field) const {
    const std::size_t at = record * fields_ + field;
    const std::size_t start = starts_.at(at);
    const std::size_t end = at + 1 < starts_.size() ? starts_[at + 1] : letters_.size();
    return std::string_view(letters_).substr(start, end - start);
}

std::string ReportData::shown(std::size_t record, const ReportColumn& column) const {
    const auto number = static_cast<std::size_t>(column.field) - 1;
    const ReportField& field = fields.at(number);
    std::string text(records.text(record, number));
    if (field.type == ReportFieldType::text) return text;
    std::string plain = text;
    std::erase(plain, ',');
    const std::string formatted = formatNumber(plain, field.format);
    return formatted == plain ? text : formatted;
}

}  // namespace orvenmod::platform::report
