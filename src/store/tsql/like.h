// The dialect's LIKE: % _ [a-c] [^x] and an escape character, without regard to case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvenmod::store::tsql {

/// Whether the whole text matches. Blanks at the text's end may be left over. `escape` is 0 for none.
bool like(std::string_view text, std::string_view pattern, char32_t escape = 0);

/// The position, in characters from 1, of the first match of the pattern within the text, 0 for none: patindex.
/// A leading and a trailing % have the pattern begin and end anywhere.
std::size_t patternIndex(std::string_view pattern, std::string_view text);

/// The bytes at the pattern's start that stand for themselves, up to the first wildcard.
std::string_view plainPrefix(std::string_view pattern);

/// Whether PostgreSQL's LIKE matches the same texts: no set, and what a text ends with doesn't matter.
bool isPlainPattern(std::string_view pattern);
/// A plain pattern for PostgreSQL's LIKE over texts in small ASCII letters.
std::string serverPattern(std::string_view pattern);
/// Any pattern as a regular expression of PostgreSQL over texts in small ASCII letters.
std::string serverExpression(std::string_view pattern);

}  // namespace orvenmod::store::tsql
