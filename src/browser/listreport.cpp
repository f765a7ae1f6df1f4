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

ListReport::ListReport(std::unique_ptr<platform::Report> report, const platform::ListGrid& vsf1,
                       std::function<void()> breathe)
    : report_(std::move(report)), vsf1_(vsf1), breathe_(std::move(breathe)) {
    report_->initialize = [this] { Report_Initialize(); };
    report_->fetchRecord = [this] { Report_FetchRecord(); };
}

// Loading the template starts an empty detail grid, so that nothing else is left to prepare.
void ListReport::Report_Initialize() { DefineDetailGrid(); }

void ListReport::DefineDetailGrid() {
    const AppState& state = appState();
    report_->loadFromFile(state.gAppPath + "\\Report3.grf");
    report_->setTitle(state.gItemName + "打印");
    report_->setHeaderText(1, "fTitle", state.gItemName);
    report_->setHeaderText(1, "fbiller", "打印人：" + state.gLoginUserName);
    for (int place = 0; place < vsf1_.columnCount(); ++place)
        defineColumn(place);
}

void ListReport::defineColumn(int place) {
    const int column = vsf1_.columnAt(place);
    const std::string title = vsf1_.text(0, column);
    const int field = place + 1;
    if (const auto format = numberFormat(vsf1_.columnFormat(column))) {
        report_->addField(title, ReportFieldType::number);
        report_->setFieldFormat(field, *format);
    } else {
        report_->addField(title, ReportFieldType::text);
    }
    // Bound by number: two columns of one title each show their own field.
    report_->addColumn(title, title, field, vsf1_.columnWidth(column) / kGridUnitsPerCentimetre);
    report_->setTitleAlignment(place, ReportAlignment::centre);
    const int alignment = vsf1_.columnAlignment(column);
    if (alignment == static_cast<int>(Alignment::centre)) {
        report_->setContentAlignment(place, ReportAlignment::centre);
    } else if (alignment == static_cast<int>(Alignment::right)) {
        report_->setContentAlignment(place, ReportAlignment::right);
    }
    if (vsf1_.columnHidden(column)) report_->hideColumn(place);
}

void ListReport::Report_FetchRecord() {
    for (int row = 1; row < vsf1_.rowCount(); ++row) {
        report_->appendRecord();
        for (int place = 0; place < vsf1_.columnCount(); ++place)
            report_->setFieldText(place + 1, vsf1_.text(row, vsf1_.columnAt(place)));
        report_->postRecord();
        if (row % kRowsBetweenBreaths == 0) breathe_();
    }
}

}  // namespace orvenmod
