// What a run of a report has gathered: fields, columns, and the records, whose texts lie one behind the other so that
// many of them cost little more than their letters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/report.h"
#include "platform/report/template.h"

namespace orvenmod::platform::report {

struct ReportField {
    std::string name;
    ReportFieldType type = ReportFieldType::text;
    std::string format;
};

struct ReportColumn {
    std::string name;
    std::string title;
    int field = 1;
    double width = 0;  ///< millimetres
    TextAlignment titleAlignment = TextAlignment::left;
    TextAlignment contentAlignment = TextAlignment::left;
    bool hidden = false;
};

class Records {
public:
    void clear(std::size_t fields);
    void add(const std::vector<std::string>& texts);
    std::size_t count() const { return fields_ == 0 ? 0 : starts_.size() / fields_; }
    /// Record and field from 0.
    std::string_view text(std::size_t record, std::size_t field) const;

private:
    std::size_t fields_ = 0;
    std::string letters_;
    std::vector<std::size_t> starts_;
};

struct ReportData {
    Template page;
    std::string title;
    std::vector<ReportField> fields;
    std::vector<ReportColumn> columns;
    Records records;

    /// The text of a record's field in the field's format.
    std::string shown(std::size_t record, const ReportColumn& column) const;
};

}  // namespace orvenmod::platform::report
