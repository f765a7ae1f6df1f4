#include "platform/qt/printing.h"

#include <QDate>
#include <QFile>
#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>
#include <stdexcept>

#include "platform/partialfile.h"
#include "platform/qt/core.h"
#include "platform/qt/pagepainter.h"
#include "platform/qt/qtprogress.h"
#include "platform/qt/text.h"
#include "platform/qt/windowlook.h"

namespace orvenmod::platform::qt {

namespace {

constexpr double kMillimetresPerInch = 25.4;

bool chosenByUser(QPrinter& printer, std::size_t pages, QWidget* parent) {
    const PlainPointer pointer;
    QPrintDialog dialog(&printer, parent);
    dressBox(dialog);
    dialog.setObjectName(QStringLiteral("print"));
    dialog.setWindowTitle(QStringLiteral("打印"));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, static_cast<int>(pages));
    return dialog.exec() == QDialog::Accepted;
}

/// False where the user cancelled on the way; a printer may have printed what came before.
bool paintPages(Core& core, QPrinter& printer, const report::ReportData& data) {
    const report::ReportPages pages(data, paperOf(printer), printedDate());
    const int last = static_cast<int>(pages.count());
    const int from = std::clamp(printer.fromPage() == 0 ? 1 : printer.fromPage(), 1, last);
    const int to = std::clamp(printer.toPage() == 0 ? last : printer.toPage(), from, last);
    QPainter painter;
    if (!painter.begin(&printer)) throw std::runtime_error("打印机无法打印：" + fromQt(printer.printerName()));
    QtProgress progress(core, "正在打印，请稍候…", data.title, to - from + 1);
    for (int number = from; number <= to; ++number) {
        if (number > from && !printer.newPage()) throw std::runtime_error("打印中断");
        paintPage(painter, printer.resolution() / kMillimetresPerInch, pages.page(static_cast<std::size_t>(number - 1)),
                  data.page.family);
        if (!progress.advance(number - from + 1)) {
            printer.abort();
            return false;
        }
    }
    if (!painter.end() || printer.printerState() == QPrinter::Error) throw std::runtime_error("打印中断");
    return true;
}

/// Whether the file is a whole PDF: a full disk isn't told by those who write it. Its end tells where its table of
/// contents begins, which is elsewhere where anything before it is missing.
bool isWhole(const QString& path) {
    constexpr qint64 kEnd = 64;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() < kEnd) return false;
    file.seek(file.size() - kEnd);
    const QByteArray end = file.readAll();
    const qsizetype found = end.indexOf("startxref");
    if (found < 0 || !end.contains("%%EOF")) return false;
    const QList<QByteArray> lines = end.mid(found).split('\n');
    return lines.size() > 1 && file.seek(lines[1].trimmed().toLongLong()) && file.read(4) == "xref";
}

void writePdf(Core& core, QPrinter& printer, const report::ReportData& data, const QString& path) {
    PartialFile file(fromQt(path));
    const QString partial = toQt(file.partialPath());
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(partial);
    if (!paintPages(core, printer, data)) return;
    if (!isWhole(partial)) throw std::runtime_error("文件无法写入：" + fromQt(path));
    file.commit();
}

}  // namespace

std::string printedDate() { return fromQt(QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"))); }

void preparePrinter(QPrinter& printer, const report::ReportData& data) {
    const report::Paper& paper = data.page.paper;
    printer.setDocName(toQt(data.title));
    printer.setCreator(QStringLiteral("Orvenmod"));
    printer.setFullPage(true);
    const bool landscape = paper.width > paper.height;
    const QSizeF upright(std::min(paper.width, paper.height), std::max(paper.width, paper.height));
    QPageLayout layout(QPageSize(upright, QPageSize::Millimeter, QString(), QPageSize::FuzzyMatch),
                       landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(),
                       QPageLayout::Millimeter);
    layout.setMode(QPageLayout::FullPageMode);
    layout.setMargins({paper.left, paper.top, paper.right, paper.bottom});
    printer.setPageLayout(layout);
}

report::Paper paperOf(const QPrinter& printer) {
    const QPageLayout layout = printer.pageLayout();
    const QSizeF size = layout.fullRect(QPageLayout::Millimeter).size();
    const QMarginsF margins = layout.margins(QPageLayout::Millimeter);
    return {size.width(), size.height(), margins.left(), margins.top(), margins.right(), margins.bottom()};
}

void printReport(Core& core, QPrinter& printer, const report::ReportData& data, QWidget* parent) {
    if (!core.printFile.empty()) return writePdf(core, printer, data, toQt(core.printFile));
    const report::ReportPages pages(data, paperOf(printer), printedDate());
    if (!chosenByUser(printer, pages.count(), parent)) return;
    if (printer.outputFormat() == QPrinter::PdfFormat) return writePdf(core, printer, data, printer.outputFileName());
    paintPages(core, printer, data);
}

}  // namespace orvenmod::platform::qt
