// Whether a workbook was written whole: the writing library reports no failed write of its temporary files.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orvenmod::platform {

/// Throws std::runtime_error where a part of the Office Open XML package is missing or cut off, or a sheet hasn't as
/// many cells as were written to it.
void checkWorkbookWhole(const std::string& path, const std::vector<std::size_t>& cells);

}  // namespace orvenmod::platform
