// What the Chinese language says of a text: where it stands in a list sorted by the letters of its readings, and by
// which letters its characters are read. Both are ICU's.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::platform::model {

/// Appends bytes that sort as the text does; case, width and accents count nothing.
void appendCollationKey(std::string_view text, std::vector<unsigned char>& bytes);

/// The text in UTF-16 for comparing as a reader would: small letters, narrow forms.
std::u16string folded(std::string_view text);

/// The readings of a character, small letters without tones: "zhong" and "chong" of 重; none of what isn't Chinese. 绿
/// is read "lu" and, as keyboards want it, "lv".
const std::vector<std::string>& readingsOf(char16_t character);

/// A number for the readings of a character, the same for characters that are read alike; 0 for none.
std::uint16_t readingNumber(char16_t character);
/// The readings of a number.
const std::vector<std::string>& readingsOfNumber(std::uint16_t number);
/// Numbers given out so far, 0 included.
std::size_t readingNumbers();

}  // namespace orvenmod::platform::model
