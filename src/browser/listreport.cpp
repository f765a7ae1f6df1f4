#include "browser/listreport.h"

#include <string>
#include <utility>

#include "browser/numbercolumn.h"
#include "frame/appstate.h"

namespace orvenmod {

using platform::Alignment;
using platform::ReportAlignment;
using platform::ReportFieldType;

namespace {

constexpr double kGridUnitsPerCentimetre = 400;
constexpr int kRowsBetweenBreaths = 5000;

}  // namespace

ListReport::ListReport(std::unique_ptr<platform::Report> report, const platform::ListGrid& grid,
                       std::function<void()> breathe)
    : Report(std::move(report)), vsf1(grid), breathe_(std::move(breathe)) {
    Report->initialize = [this] { Report_Initialize(); };
    Report->fetchRecord = [this] { Report_FetchRecord(); };
}

// Loading the template starts an empty detail grid, so that nothing else is left to prepare.
void ListReport::Report_Initialize() { DefineDetailGrid(); }

void ListReport::DefineDetailGrid() {
    const AppState& state = appState();
    Report->loadFromFile(state.gAppPath + "\\Report3.grf");
    Report->setTitle(state.gItemName + "打印");
    Report->setHeaderText(1, "fTitle", state.gItemName);
    Report->setHeaderText(1, "fbiller", "打印人：" + state.gLoginUserName);
    for (int column = 0; column < vsf1.columnCount(); ++column)
        defineColumn(column);
}

void ListReport::defineColumn(int column) {
    const std::string title = vsf1.text(0, column);
    const int field = column + 1;
    if (const auto format = numberFormat(vsf1.columnFormat(column))) {
        Report->addField(title, ReportFieldType::number);
        Report->setFieldFormat(field, *format);
    } else {
        Report->addField(title, ReportFieldType::text);
    }
    // Bound by number: two columns of one title each show their own field.
    Report->addColumn(title, title, field, vsf1.columnWidth(column) / kGridUnitsPerCentimetre);
    Report->setTitleAlignment(column, ReportAlignment::centre);
    const int alignment = vsf1.columnAlignment(column);
    if (alignment == static_cast<int>(Alignment::centre)) {
        Report->setContentAlignment(column, ReportAlignment::centre);
    } else if (alignment == static_cast<int>(Alignment::right)) {
        Report->setContentAlignment(column, ReportAlignment::right);
    }
    if (vsf1.columnHidden(column)) Report->hideColumn(column);
}

void ListReport::Report_FetchRecord() {
    for (int row = 1; row < vsf1.rowCount(); ++row) {
        Report->appendRecord();
        for (int column = 0; column < vsf1.columnCount(); ++column)
            Report->setFieldText(column + 1, vsf1.text(row, column));
        Report->postRecord();
        if (row % kRowsBetweenBreaths == 0) breathe_();
    }
}

}  // namespace orvenmod
