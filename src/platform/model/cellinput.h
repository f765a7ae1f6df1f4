// What a cell makes of the text that its user typed: the text it keeps, or why it refuses. Nothing is cut or guessed;
// what is understood in another form than the cell keeps ("１，２３４．５", "26-3-4") is put into that form.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date.h"
#include "platform/entrygrid.h"

namespace orvenmod::platform::model {

struct CellInput {
    std::string text;          ///< as the cell keeps it
    std::string refusal = {};  ///< what the cell takes instead, for its user; "" where it takes the text
};

/// The entry of a list that was meant.
struct ItemInput {
    int item = -1;
    std::string refusal = {};
};

/// A number in its plain form ("1,234.5" gives "1234.5", ".5" gives "0.5"); refused where it isn't one, has more
/// decimals than told, or lies beyond the limits.
CellInput readNumber(std::string_view typed, const NumberRule& rule);

/// A day as "YYYY-MM-DD". Understood are 20260304, 2026-3-4, 26-3-4 (a year of two digits is 20xx) and, where there is
/// a `today`, 3-4 of its year; with '-', '/' or '.' between the parts, or 年, 月 and 日 behind them.
CellInput readDate(std::string_view typed, const std::optional<Date>& today);

/// The places of the entries that contain that text, without regard to the case of plain letters.
std::vector<int> itemsWith(std::string_view text, const std::vector<std::string>& items);

/// The only entry of exactly that text, else the only one that contains it, without regard to the case of plain
/// letters.
ItemInput readItem(std::string_view typed, const std::vector<std::string>& items);

/// With a blank for each line break.
std::string onOneLine(std::string_view text);

/// Full-width letters, digits and signs as the plain ones, without the blanks around them.
std::string plainLetters(std::string_view text);

}  // namespace orvenmod::platform::model
