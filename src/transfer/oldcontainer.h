// The container of an .xls. The library that reads its cells follows one in a way of its own, and beyond its memory
// where one was made to mislead; so it is given one that is written anew, with the workbook's stream alone:
//
//   a.xls   Workbook, in pieces of 64 bytes   SummaryInformation   ..      as somebody made it, judged by libgsf
//   copy    Workbook, in one piece                                          in the folder for temporary files
#pragma once

#include <string>

namespace orvenmod {

/// Gone with the object; whoever has opened it by then reads on.
class OldContainerCopy {
public:
    /// Throws UnreadableFile where the file holds no workbook whose records hold what they tell, or the copy can't be
    /// written.
    explicit OldContainerCopy(const std::string& path);
    ~OldContainerCopy();
    OldContainerCopy(const OldContainerCopy&) = delete;
    OldContainerCopy& operator=(const OldContainerCopy&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

}  // namespace orvenmod
