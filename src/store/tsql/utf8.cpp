#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

// A byte that belongs to no character stands for itself in a range that has no characters.
constexpr char32_t kBrokenByte = 0xDC00;

}  // namespace

char32_t nextCharacter(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t size = characterSize(text[at]);
    if (lead < 0x80) {
        ++at;
        return lead;
    }
    if (size == 1 || at + size > text.size()) {
        ++at;
        return kBrokenByte + lead;
    }
    char32_t character = lead & (0xFFu >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0) != 0x80) {
            ++at;
            return kBrokenByte + lead;
        }
        character = (character << 6) | (byte & 0x3F);
    }
    at += size;
    return character;
}

void appendCharacter(std::string& text, char32_t character) {
    const auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | (character >> 6));
        add(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        add(0xE0 | (character >> 12));
        add(0x80 | ((character >> 6) & 0x3F));
        add(0x80 | (character & 0x3F));
    } else {
        add(0xF0 | (character >> 18));
        add(0x80 | ((character >> 12) & 0x3F));
        add(0x80 | ((character >> 6) & 0x3F));
        add(0x80 | (character & 0x3F));
    }
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    for (const char byte : text)
        count += (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    return count;
}

std::size_t bytePosition(std::string_view text, std::size_t index) {
    std::size_t at = 0;
    while (index > 0 && at < text.size()) {
        nextCharacter(text, at);
        --index;
    }
    return at;
}

std::size_t codePageLength(std::string_view text) {
    std::size_t length = 0;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        length += value < 0x80 ? 1 : (value & 0xC0) != 0x80 ? 2 : 0;
    }
    return length;
}

std::string_view codePagePrefix(std::string_view text, std::size_t bytes) {
    std::size_t at = 0;
    std::size_t used = 0;
    while (at < text.size()) {
        std::size_t next = at;
        used += nextCharacter(text, next) < 0x80 ? 1U : 2U;
        if (used > bytes) break;
        at = next;
    }
    return text.substr(0, at);
}

char32_t lowerCharacter(char32_t c) {
    if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 32 : c;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
    if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 32;
    if (c >= 0x410 && c <= 0x42F) return c + 32;
    if (c >= 0x400 && c <= 0x40F) return c + 80;
    if (c >= 0xFF21 && c <= 0xFF3A) return c + 32;
    return c;
}

char32_t upperCharacter(char32_t c) {
    if (c < 0x80) return c >= 'a' && c <= 'z' ? c - 32 : c;
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return c - 32;
    if (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) return c - 32;
    if (c >= 0x430 && c <= 0x44F) return c - 32;
    if (c >= 0x450 && c <= 0x45F) return c - 80;
    if (c >= 0xFF41 && c <= 0xFF5A) return c - 32;
    return c;
}

namespace {

template <typename Change>
std::string changed(std::string_view text, Change change) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t before = nextCharacter(text, at);
        const char32_t after = change(before);
        // Bytes that are no character stay as they are.
        if (after == before) {
            result.append(text.substr(start, at - start));
        } else {
            appendCharacter(result, after);
        }
    }
    return result;
}

}  // namespace

std::string lowerText(std::string_view text) { return changed(text, lowerCharacter); }
std::string upperText(std::string_view text) { return changed(text, upperCharacter); }

std::string_view withoutTrailingBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

std::string foldedText(std::string_view text) { return asciiLower(withoutTrailingBlanks(text)); }

}  // namespace orvenmod::store::tsql
