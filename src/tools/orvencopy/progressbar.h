// How far a copy is: on a terminal one line that is drawn again, else a line for each tenth.
//
//   copying    tblItem              [##########------------------]  36 %
#pragma once

#include <chrono>
#include <iosfwd>
#include <string>

#include "store/copy/copy.h"
#include "tools/orvencopy/program.h"

namespace orvenmod::tools {

class ProgressBar {
public:
    ProgressBar(std::ostream& stream, Terminal terminal) : stream_(stream), terminal_(terminal) {}

    void show(const store::CopyProgress& progress);
    /// Takes the line away, so that what comes next stands alone.
    void clear();

private:
    void draw(const store::CopyProgress& progress, int percent);

    std::ostream& stream_;
    Terminal terminal_;
    store::CopyProgress::Stage stage_ = store::CopyProgress::Stage::copying;
    int percent_ = -1;
    std::string table_;
    bool drawn_ = false;
};

}  // namespace orvenmod::tools
