// The workbooks that an import writes: an empty one to fill in, and one of the rows that were refused.
#pragma once

#include <string>
#include <vector>

#include "transfer/importsession.h"

namespace orvenmod {

/// The class's captions, those that must be filled with a mark behind; lists where a lookup has few entries; codes as
/// text. Throws std::runtime_error where the disk refuses: a file that stood there stays then.
void writeTemplate(const std::string& path, const std::vector<ImportField>& fields);

/// The refused rows as they stand, the reason behind each; it can be brought in again. A cell that holds more than a
/// spreadsheet's does is cut, which its row's reason tells; how many are. Throws likewise.
std::size_t writeRefused(const std::string& path, const ImportSession& session);

}  // namespace orvenmod
