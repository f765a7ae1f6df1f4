#include "store/odbc/knowncharacters.h"

#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

namespace {

constexpr char32_t kLastAscii = 0x7F;

}  // namespace

std::string KnownCharacters::unknown(std::string_view text) const {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t character = tsql::nextCharacter(text, at);
        if (character <= kLastAscii || knows(character)) continue;
        const std::string_view bytes = text.substr(start, at - start);
        if (result.find(bytes) == std::string::npos) result += bytes;
    }
    return result;
}

std::string KnownCharacters::learn(std::string_view asked, std::string_view answer) {
    std::size_t given = 0;
    for (std::size_t at = 0; at < asked.size();) {
        const std::size_t start = at;
        const char32_t character = tsql::nextCharacter(asked, at);
        const std::string_view bytes = asked.substr(start, at - start);
        if (answer.substr(given, bytes.size()) != bytes) return std::string(bytes);
        given += bytes.size();
        add(character);
    }
    return {};
}

void KnownCharacters::add(char32_t character) {
    if (character >= known_.size()) known_.resize(character + 1);
    known_[character] = true;
}

}  // namespace orvenmod::store::odbc
