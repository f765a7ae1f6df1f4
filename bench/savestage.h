// New items that are saved into the goods' largest category by the editor's window, and taken out again.
#pragma once

#include <string>

#include "memorystage.h"
#include "report.h"

namespace orvenmod::bench {

class SaveStage {
public:
    explicit SaveStage(std::string target);

    /// Tells the component that the goods of the database are open.
    void chooseGoods() const;
    /// From the press of the button until the window has proposed the next code, in milliseconds of the clock. The
    /// stage's records are those of the save.
    double save(MemoryStage& windows, const Clock& clock) const;
    /// Takes out what has been saved.
    void restore() const;

private:
    std::string target_;
    std::string counter_;
    int category_ = 0;
};

}  // namespace orvenmod::bench
