#include "platform/asciitext.h"

namespace orvenmod::platform {

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
}

std::string_view withoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

}  // namespace orvenmod::platform
