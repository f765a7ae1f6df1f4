#include "platform/qt/qtreport.h"

#include <QPrinter>

#include "platform/qt/core.h"
#include "platform/qt/previewdialog.h"
#include "platform/qt/printing.h"

namespace orvenmod::platform::qt {

void QtReport::printPreview() {
    const report::ReportData data = gather();
    PreviewDialog dialog(core_, data);
    const PlainPointer pointer;
    dialog.exec();
}

void QtReport::print() {
    const report::ReportData data = gather();
    QPrinter printer(QPrinter::HighResolution);
    preparePrinter(printer, data);
    printReport(core_, printer, data, core_.front());
}

}  // namespace orvenmod::platform::qt
