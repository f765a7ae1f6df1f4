// UTF-8 to the UTF-16 of spreadsheet cells.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::platform {

/// What a cell holds, in UTF-16 units.
inline constexpr std::size_t kLongestCell = 32767;

/// Broken sequences become U+FFFD. At most `longest` units, never half of a surrogate pair.
std::u16string toUtf16(std::string_view text, std::size_t longest = kLongestCell);

/// The text cut likewise, still in UTF-8.
std::string_view cutToUnits(std::string_view text, std::size_t longest = kLongestCell);

/// As a part of a package may hold it: broken sequences, and the two that are no characters, become U+FFFD.
std::string readableText(std::string_view text);

}  // namespace orvenmod::platform
