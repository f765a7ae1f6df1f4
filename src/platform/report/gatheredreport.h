// What every toolkit's report has in common: it takes the definition and the records in; how pages get to the user is
// the toolkit's own.
#pragma once

#include <string>
#include <vector>

#include "platform/report.h"
#include "platform/report/reportdata.h"

namespace orvenmod::platform::report {

class GatheredReport : public Report {
public:
    void loadFromFile(const std::string& path) override;
    void setTitle(const std::string& title) override { data_.title = title; }
    void setHeaderText(int header, const std::string& control, const std::string& text) override;
    void addField(const std::string& name, ReportFieldType type) override;
    void setFieldFormat(int field, const std::string& format) override;
    void addColumn(const std::string& name, const std::string& title, int field, double width) override;
    void setTitleAlignment(int column, ReportAlignment alignment) override;
    void setContentAlignment(int column, ReportAlignment alignment) override;
    void hideColumn(int column) override;
    void appendRecord() override;
    void setFieldText(int field, const std::string& text) override;
    void postRecord() override;

protected:
    /// Raises the two events and gives what they handed over.
    ReportData gather();

private:
    ReportField& field(int number);
    ReportColumn& column(int number) { return data_.columns.at(static_cast<std::size_t>(number)); }

    ReportData data_;
    std::vector<std::string> record_;  ///< between append and post
    bool recordOpen_ = false;
};

}  // namespace orvenmod::platform::report
