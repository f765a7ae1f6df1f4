// Whether a workbook was written whole: the writing library reports no failed write of its temporary files.
#pragma once

#include <string>

namespace orvenmod::platform {

/// Throws std::runtime_error where a part of the Office Open XML package is missing or cut off.
void checkWorkbookWhole(const std::string& path, std::size_t sheets);

}  // namespace orvenmod::platform
