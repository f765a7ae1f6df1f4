#include "platform/sheet/utf16.h"

#include <cstdint>

namespace orvenmod::platform {

namespace {

constexpr char32_t kBroken = 0xFFFD;

int lengthByLead(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// The character at `at`, which moves behind it.
char32_t next(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    const int length = lengthByLead(lead);
    if (length == 1) return lead;
    if (length == 0) return kBroken;
    char32_t character = lead & (0x7Fu >> length);
    for (int i = 1; i < length; ++i) {
        if (at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) return kBroken;
        character = (character << 6) | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
    }
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    return surrogate || character > 0x10FFFF ? kBroken : character;
}

}  // namespace

std::u16string toUtf16(std::string_view text, std::size_t longest) {
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = next(text, at);
        if (units.size() + (character > 0xFFFF ? 2 : 1) > longest) break;
        if (character > 0xFFFF) {
            units += static_cast<char16_t>(0xD7C0 + (character >> 10));
            units += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
        } else {
            units += static_cast<char16_t>(character);
        }
    }
    return units;
}

std::string_view cutToUnits(std::string_view text, std::size_t longest) {
    if (text.size() <= longest) return text;
    std::size_t units = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t before = at;
        units += next(text, at) > 0xFFFF ? 2U : 1U;
        if (units > longest) return text.substr(0, before);
    }
    return text;
}

std::string readableText(std::string_view text) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    std::string readable;
    std::size_t kept = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t before = at;
        const char32_t character = next(text, at);
        if (character != kBroken && character != 0xFFFE && character != 0xFFFF) continue;
        readable.append(text.substr(kept, before - kept)).append(kReplacement);
        kept = at;
    }
    return readable.append(text.substr(kept));
}

}  // namespace orvenmod::platform
