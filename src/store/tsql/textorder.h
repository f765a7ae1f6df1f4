// The order of texts: signs, digits, Chinese characters by their sound, letters without regard to case, other letters.
#pragma once

#include <string_view>

namespace orvenmod::store::tsql {

/// Below, at or above 0 as the left text stands before, with or behind the right one. Trailing blanks count.
int compareTexts(std::string_view left, std::string_view right);

}  // namespace orvenmod::store::tsql
