// Characters of UTF-8 text, and how long texts are in the server's code page.
//
//   中a    2 characters, 4 bytes here, 3 in code page 936
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "store/text.h"

namespace orvenmod::store::tsql {

/// Bytes of the character that starts with this byte: 1 to 4; 1 for a byte that starts none.
inline std::size_t characterSize(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    return byte < 0xC2 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : byte < 0xF5 ? 4 : 1;
}

/// The character at `at`, and `at` behind it. A broken sequence gives its bytes one by one, as 0xDC00 and the byte.
char32_t nextCharacter(std::string_view text, std::size_t& at);
void appendCharacter(std::string& text, char32_t character);

/// Count of characters.
std::size_t characterCount(std::string_view text);
/// The byte position of the character with that index from 0; the text's size beyond the end.
std::size_t bytePosition(std::string_view text, std::size_t index);

/// Bytes in code page 936: one for ASCII, two for every other character.
std::size_t codePageLength(std::string_view text);
/// The longest beginning that takes at most `bytes` in code page 936, never half a character.
std::string_view codePagePrefix(std::string_view text, std::size_t bytes);

/// The character in lower case or upper case: ASCII, full-width, Latin-1, Greek and Cyrillic letters.
char32_t lowerCharacter(char32_t character);
char32_t upperCharacter(char32_t character);
std::string lowerText(std::string_view text);
std::string upperText(std::string_view text);

/// Without the blanks at the end.
std::string_view withoutTrailingBlanks(std::string_view text);
/// Without the blanks at the end and with small ASCII letters: texts that compare as equal are then the same.
std::string foldedText(std::string_view text);

}  // namespace orvenmod::store::tsql
