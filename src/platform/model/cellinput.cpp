#include "platform/model/cellinput.h"

#include <algorithm>

#include "platform/asciitext.h"

namespace orvenmod::platform::model {

namespace {

template <class Test>
std::vector<int> placesOf(const std::vector<std::string>& items, Test fits) {
    std::vector<int> places;
    for (std::size_t place = 0; place < items.size(); ++place) {
        if (fits(items[place])) places.push_back(static_cast<int>(place));
    }
    return places;
}

struct Replacement {
    std::string_view sign;
    char plain;
};

// Beside the full-width forms of ASCII: signs that an input method or a copied page gives for the plain ones.
constexpr Replacement kSigns[] = {{"\u3000", ' '}, {"\u00A0", ' '}, {"\u3002", '.'},
                                  {"\u2212", '-'}, {"\r", ' '},     {"\n", ' '}};

/// The ASCII character of a full-width form (U+FF01 to U+FF5E), 0 for any other text.
char narrowed(std::string_view letter) {
    if (letter.size() < 3 || letter[0] != '\xEF') return 0;
    const unsigned code =
        0xF000U | (static_cast<unsigned>(letter[1]) & 0x3FU) << 6U | (static_cast<unsigned>(letter[2]) & 0x3FU);
    constexpr unsigned kFirst = 0xFF01;
    constexpr unsigned kLast = 0xFF5E;
    return code >= kFirst && code <= kLast ? static_cast<char>('!' + (code - kFirst)) : '\0';
}

}  // namespace

std::string plainLetters(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const auto* sign = std::find_if(std::begin(kSigns), std::end(kSigns),
                                        [text](const Replacement& each) { return text.starts_with(each.sign); });
        if (sign != std::end(kSigns)) {
            plain += sign->plain;
            text.remove_prefix(sign->sign.size());
        } else if (const char narrow = narrowed(text)) {
            plain += narrow;
            text.remove_prefix(3);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return std::string(withoutBlanks(plain));
}

std::string onOneLine(std::string_view text) {
    std::string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool pair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
        if (!pair) line += text[at] == '\r' || text[at] == '\n' ? ' ' : text[at];
    }
    return line;
}

std::vector<int> itemsWith(std::string_view text, const std::vector<std::string>& items) {
    const std::string part = lowerCase(withoutBlanks(text));
    return placesOf(items,
                    [&part](const std::string& item) { return lowerCase(item).find(part) != std::string::npos; });
}

ItemInput readItem(std::string_view typed, const std::vector<std::string>& items) {
    const std::string_view meant = withoutBlanks(typed);
    std::vector<int> places = placesOf(items, [typed](const std::string& item) { return item == typed; });
    if (places.empty())
        places = placesOf(items, [meant](const std::string& item) { return withoutBlanks(item) == meant; });
    if (places.empty()) places = itemsWith(typed, items);
    if (places.empty()) return {.refusal = "没有这一项"};
    if (places.size() > 1) return {.refusal = "有多项符合，请从列表中选择"};
    return {places.front()};
}

}  // namespace orvenmod::platform::model
