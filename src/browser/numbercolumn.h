// Which columns of the list hold numbers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvenmod {

/// The number format of reports and spreadsheets ("#,##0.00") for the format of a list's column ("#,###.##"); nothing
/// for a column that holds texts.
std::optional<std::string> numberFormat(std::string_view listFormat);

/// The format of a spreadsheet that shows numbers as the list's format does; nothing for one that the list doesn't
/// understand. A spreadsheet would leave the point of "#,###.##" behind a whole number, so such decimals always show.
std::optional<std::string> sheetFormat(std::string_view listFormat);

}  // namespace orvenmod
