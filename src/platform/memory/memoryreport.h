// A report that goes to no paper: the toolkit keeps what was handed over.
#pragma once

#include "platform/memory/memorytoolkit.h"
#include "platform/report/gatheredreport.h"

namespace orvenmod::platform::memory {

class MemoryReport final : public report::GatheredReport {
public:
    explicit MemoryReport(MemoryToolkit& toolkit) : toolkit_(toolkit) {}

    void printPreview() override { toolkit_.addReport({Output::preview, gather()}); }
    void print() override { toolkit_.addReport({Output::print, gather()}); }

private:
    MemoryToolkit& toolkit_;
};

}  // namespace orvenmod::platform::memory
