// Number formats of list columns ("#,###.##") as a clerk expects them: 1234.5 shows as 1,234.5, 1234 as 1,234, 0.5 as
// 0.5. "#,##0.00" shows 1,234.50, and "0%" shows 0.5 as 50%.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::platform {

/// The text in the format; a text that is no number, and any format not understood, leaves it as it stands.
std::string formatNumber(std::string_view text, std::string_view format);

/// The number without an exponent, as short as reads back: 1234.5.
std::string plainNumber(double value);

/// Whether a whole number is longer than a spreadsheet's numbers, which keep fifteen digits: without a format it is a
/// key then, not a quantity.
bool losesDigits(std::string_view number);

/// Whether formatNumber understands the format.
bool isNumberFormat(std::string_view format);

}  // namespace orvenmod::platform
