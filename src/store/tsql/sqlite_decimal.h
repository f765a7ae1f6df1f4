// How a decimal stands in the file.
//
// A column of decimals has SQLite's numeric affinity: whatever reads as a number becomes one, a double where it has a
// fraction, and a double has 15 digits for sure. Nearly every value of a suite is among those that a double tells, and
// stays a number. One that no double tells is kept as a text instead, and a letter behind it keeps SQLite from reading
// it as a number:
//
//   decimal(18,6)   12.5                  12.5, a double
//                   99999999999           an integer
//                   99999999999.999999    '99999999999.999999d'
//
// A value has one form, so that what is equal is stored alike, and equality, groups, keys and their indexes need
// nothing else. To SQLite's own arithmetic the text is the number that it begins with. Only an order needs more, as
// SQLite puts texts behind all numbers: see sqlite_emitter_comparison.cpp.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvenmod::store::tsql {

inline constexpr char kDecimalMark = 'd';

/// The digits of a decimal that is kept as a text; nothing for any other text.
inline std::optional<std::string_view> keptDigits(std::string_view text) {
    if (text.size() < 2 || text.back() != kDecimalMark) return std::nullopt;
    text.remove_suffix(1);
    if (text.find_first_not_of("-.0123456789") != std::string_view::npos) return std::nullopt;
    return text;
}

}  // namespace orvenmod::store::tsql
