// A text as the letters that a user types: one UTF-8 character each.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::test {

inline std::vector<std::string> lettersOf(const std::string& text) {
    std::vector<std::string> letters;
    for (const char c : text) {
        const bool continues = (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
        if (continues && !letters.empty()) {
            letters.back() += c;
        } else {
            letters.emplace_back(1, c);
        }
    }
    return letters;
}

}  // namespace orvenmod::test
