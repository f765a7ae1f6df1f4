// Texts by ASCII alone, as names and keys are compared; the dialect's own rules stand in tsql/utf8.h.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

namespace orvenmod::store {

/// The letter in lower case where it is one of ASCII's.
template <std::integral Character>
constexpr Character asciiLower(Character c) {
    return c >= 'A' && c <= 'Z' ? static_cast<Character>(c - 'A' + 'a') : c;
}

inline std::string asciiLower(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = asciiLower(c);
    return result;
}

/// Without blanks, tabs and line ends at both ends.
inline std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

}  // namespace orvenmod::store
