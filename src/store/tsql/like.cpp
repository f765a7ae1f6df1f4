// The server's LIKE has sets, which SQLite's has not, and lets blanks at the text's end be left over, since a char
// column pads with them.
//
//   'abc'   like 'A[a-c]%'              1
//   'abc  ' like '%c'                   1
//   'a%c'   like 'a!%c' escape '!'      1
#include "store/tsql/like.h"

#include <array>

#include "store/text.h"
#include "store/tsql/utf8.h"

// Letters are those of ASCII, as the store's text order folds: a pattern's beginning is looked up in that order.
namespace orvenmod::store::tsql {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// It may stand within a character of the text.
bool isBrokenByte(char32_t character) { return character >= 0xDC80 && character <= 0xDCFF; }

class Matcher {
public:
    Matcher(std::string_view text, std::string_view pattern, char32_t escape)
        : text_(text), pattern_(pattern), escape_(escape) {}

    // The usual walk with one resting point: a later % makes an earlier one final, so that no pattern takes longer than
    // the product of the two lengths.
    bool matches(std::size_t start) const {
        std::size_t at = start;
        std::size_t in = 0;
        std::size_t restIn = kNone;
        std::size_t restAt = 0;
        for (;;) {
            if (in < pattern_.size() && pattern_[in] == '%' && escape_ != '%') {
                restIn = ++in;
                restAt = at = candidate(at, in);
                continue;
            }
            if (in == pattern_.size() && (in == restIn || onlyBlanks(at))) return true;
            std::size_t nextAt = at;
            std::size_t nextIn = in;
            if (at < text_.size() && in < pattern_.size() && step(nextAt, nextIn)) {
                at = nextAt;
                in = nextIn;
                continue;
            }
            if (restIn == kNone || restAt >= text_.size()) return false;
            nextCharacter(text_, restAt);
            restAt = at = candidate(restAt, restIn);
            in = restIn;
        }
    }

private:
    // From where on the element at `in` can match at all, so that most of a text is passed over by its bytes.
    std::size_t candidate(std::size_t at, std::size_t in) const {
        if (in == pattern_.size() || escape_ != 0 || std::string_view("%_[").find(pattern_[in]) != kNone) return at;
        std::size_t behind = in;
        const char32_t wanted = nextCharacter(pattern_, behind);
        if (isBrokenByte(wanted)) return at;
        const char32_t letter = asciiLower(wanted);
        const bool cased = letter >= 'a' && letter <= 'z';
        const std::array both = {static_cast<char>(letter), static_cast<char>(letter - 'a' + 'A')};
        const std::size_t found = cased ? text_.find_first_of(std::string_view(both.data(), both.size()), at)
                                        : text_.find(pattern_.substr(in, behind - in), at);
        return found == kNone ? text_.size() : found;
    }

    bool onlyBlanks(std::size_t at) const { return text_.find_first_not_of(' ', at) == kNone; }

    // Matches one character of the text against one element of the pattern, and moves behind both.
    bool step(std::size_t& at, std::size_t& in) const {
        const char32_t character = nextCharacter(text_, at);
        char32_t wanted = nextCharacter(pattern_, in);
        if (wanted == escape_ && escape_ != 0 && in < pattern_.size()) {
            wanted = nextCharacter(pattern_, in);
        } else if (wanted == '_') {
            return true;
        } else if (wanted == '[') {
            return inSet(character, in);
        }
        return character == wanted || asciiLower(character) == asciiLower(wanted);
    }

    // `in` stands behind the '['. A set that is not closed matches nothing.
    bool inSet(char32_t character, std::size_t& in) const {
        const bool negated = in < pattern_.size() && pattern_[in] == '^';
        if (negated) ++in;
        const char32_t wanted = asciiLower(character);
        bool found = false;
        bool first = true;
        // A ']' in front is a member of the set.
        while (in < pattern_.size() && (pattern_[in] != ']' || first)) {
            char32_t low = nextCharacter(pattern_, in);
            if (low == escape_ && escape_ != 0 && in < pattern_.size()) low = nextCharacter(pattern_, in);
            first = false;
            char32_t high = low;
            if (in + 1 < pattern_.size() && pattern_[in] == '-' && pattern_[in + 1] != ']') {
                ++in;
                high = nextCharacter(pattern_, in);
            }
            found = found || (wanted >= asciiLower(low) && wanted <= asciiLower(high));
        }
        if (in >= pattern_.size()) return false;
        ++in;
        return found != negated;
    }

    std::string_view text_;
    std::string_view pattern_;
    char32_t escape_;
};

}  // namespace

bool like(std::string_view text, std::string_view pattern, char32_t escape) {
    return Matcher(text, pattern, escape).matches(0);
}

std::size_t patternIndex(std::string_view pattern, std::string_view text) {
    const bool anywhere = pattern.starts_with('%');
    if (anywhere) pattern.remove_prefix(1);
    const Matcher matcher(text, pattern, 0);
    std::size_t position = 1;
    for (std::size_t at = 0; at < text.size(); ++position) {
        if (matcher.matches(at)) return position;
        if (!anywhere) return 0;
        nextCharacter(text, at);
    }
    return 0;
}

std::string_view plainPrefix(std::string_view pattern) {
    const std::size_t end = pattern.find_first_of("%_[");
    return pattern.substr(0, end);
}

}  // namespace orvenmod::store::tsql
