// The print of the item list: defines the report's detail grid after the list grid and hands over its rows. Made when
// the window loads, dropped when it unloads.
#pragma once

#include <functional>
#include <memory>

#include "platform/listgrid.h"
#include "platform/report.h"

namespace orvenmod {

class ListReport {
public:
    /// The grid outlives it. `breathe` is called now and then while the rows of a long list are handed over.
    ListReport(std::unique_ptr<platform::Report> report, const platform::ListGrid& vsf1, std::function<void()> breathe);

    /// Both print the list as it stands in the grid. A template that is missing, broken or without one of the two
    /// controls that the list fills throws std::runtime_error.
    void printPreview() { report_->printPreview(); }
    void print() { report_->print(); }

private:
    void Report_Initialize();
    void Report_FetchRecord();
    void DefineDetailGrid();
    void defineColumn(int place);

    std::unique_ptr<platform::Report> report_;
    const platform::ListGrid& vsf1_;
    std::function<void()> breathe_;
};

}  // namespace orvenmod
