// A report with Qt's printing: preview on the screen, the print dialog, PDF.
#pragma once

#include "platform/report/gatheredreport.h"

namespace orvenmod::platform::qt {

class Core;

class QtReport final : public report::GatheredReport {
public:
    explicit QtReport(Core& core) : core_(core) {}

    void printPreview() override;
    /// The events come before the dialog: it needs the template's paper, and a broken template is told at once.
    void print() override;

private:
    Core& core_;
};

}  // namespace orvenmod::platform::qt
