// What holds for ASCII alone, whatever the locale: names and paths are folded by it, no text that a clerk reads.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::platform {

/// With the letters A to Z made small.
std::string lowerCase(std::string_view text);

/// Without the outer blanks and tabulators.
std::string_view withoutBlanks(std::string_view text);

}  // namespace orvenmod::platform
