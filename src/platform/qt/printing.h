// Puts the pages of a report on a printer or into a PDF file.
#pragma once

#include <string>

#include "platform/report/reportpages.h"

class QPrinter;
class QWidget;

namespace orvenmod::platform::qt {

class Core;

/// Today as the clerk writes it.
std::string printedDate();

/// Gives the printer the paper that the template asks for.
void preparePrinter(QPrinter& printer, const report::ReportData& data);
/// The paper that the printer has now, after what the user chose.
report::Paper paperOf(const QPrinter& printer);

/// Asks with the print dialog, over `parent`, and prints; where the core names a file it goes there as a PDF unasked.
/// Nothing where the user cancels the dialog; a PDF file is dropped where he cancels on the way. Throws
/// std::runtime_error where the printer or the file refuses; no half file is left then.
void printReport(Core& core, QPrinter& printer, const report::ReportData& data, QWidget* parent);

}  // namespace orvenmod::platform::qt
