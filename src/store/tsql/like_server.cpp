// A pattern in PostgreSQL's own terms, so that the server matches it at its own speed. Texts are matched in small ASCII
// letters, and so is the pattern.
//
//   A\_%       LIKE 'a\\_%'                   its LIKE has an escape character of its own
//   [A-C]x_    ~ '^[\u0061-\u0063]x. *$'      blanks at the text's end may be left over
#include <cstdio>

#include "store/text.h"
#include "store/tsql/like.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {
namespace {

constexpr const char* kNothing = ".^";

bool isWordCharacter(char32_t c) { return c >= 0x80 || c == ' ' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z'); }

std::string code(char32_t c) {
    char text[16];
    std::snprintf(text, sizeof text, "\\U%08X", static_cast<unsigned>(c));
    return text;
}

std::string single(char32_t c) {
    std::string text;
    if (isWordCharacter(c)) {
        appendCharacter(text, c);
        return text;
    }
    return code(c);
}

/// The set that begins at `in`, behind its '[', and `in` behind its end; kNothing for one that is not closed.
std::string bracket(std::string_view pattern, std::size_t& in) {
    const bool negated = in < pattern.size() && pattern[in] == '^';
    in += negated ? 1 : 0;
    std::string members;
    bool first = true;
    while (in < pattern.size() && (pattern[in] != ']' || first)) {
        const char32_t low = asciiLower(nextCharacter(pattern, in));
        char32_t high = low;
        first = false;
        if (in + 1 < pattern.size() && pattern[in] == '-' && pattern[in + 1] != ']') {
            ++in;
            high = asciiLower(nextCharacter(pattern, in));
        }
        if (low <= high) {
            members += low == high ? code(low) : code(low) + "-" + code(high);
        }
    }
    if (in >= pattern.size()) {
        return kNothing;
    }
    ++in;
    if (members.empty()) {
        return negated ? "." : kNothing;
    }
    return (negated ? "[^" : "[") + members + "]";
}

}  // namespace

bool isPlainPattern(std::string_view pattern) {
    return pattern.ends_with('%') && pattern.find('[') == std::string_view::npos;
}

std::string serverPattern(std::string_view pattern) {
    std::string result;
    for (const char c : pattern) {
        result += static_cast<char>(asciiLower(static_cast<unsigned char>(c)));
        if (c == '\\') {
            result += c;
        }
    }
    return result;
}

std::string serverExpression(std::string_view pattern) {
    std::string result = "^";
    for (std::size_t in = 0; in < pattern.size();) {
        const char32_t c = nextCharacter(pattern, in);
        if (c == '%') {
            result += ".*";
        } else if (c == '_') {
            result += '.';
        } else if (c == '[') {
            const std::string set = bracket(pattern, in);
            if (set == kNothing) {
                return kNothing;
            }
            result += set;
        } else {
            result += single(asciiLower(c));
        }
    }
    return result + " *$";
}

}  // namespace orvenmod::store::tsql
