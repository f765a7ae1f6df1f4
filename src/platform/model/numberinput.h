// What a number cell lets the user type, the same in every toolkit. Letter by letter: digits, one sign in front where
// the minimum is below 0, one point where there are decimals, no more decimals than told, nothing beyond the limits
// that further digits can't mend. On leaving the cell the whole is tested, and what is no number within the limits
// gives way to the text before.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/entrygrid.h"

namespace orvenmod::platform::model {

/// Whether the text may stand in the cell while the user types.
bool mayBecomeNumber(std::string_view text, const NumberRule& rule);

/// The text as the cell keeps it on leaving ("1." gives "1", ".5" gives "0.5", "" stays); nothing where it is refused.
std::optional<std::string> finishedNumber(std::string_view text, const NumberRule& rule);

/// The day a user typed into a date cell, as "YYYY-MM-DD" ("2026-1-5" and "2026/01/05" are taken, "" stays); nothing
/// where it is no day of the calendar.
std::optional<std::string> finishedDate(std::string_view text);

}  // namespace orvenmod::platform::model
