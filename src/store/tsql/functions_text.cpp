// Functions of texts. Positions count characters from 1, and the server's borders differ from ours: a start below 1
// counts the places in front of the text, and a count beyond its end is no failure.
//
//   substring('abc', 0, 2)    a
//   right('abc', 5)           abc
//   left('中文', 1)           中
//   quotename('a]b')          [a]]b]
#include <algorithm>
#include <array>

#include "store/tsql/dates.h"
#include "store/tsql/decimal.h"
#include "store/tsql/error.h"
#include "store/tsql/functions.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

std::size_t findFolded(std::string_view text, std::string_view wanted, std::size_t from) {
    const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), wanted.begin(),
                                   wanted.end(), [](char a, char b) { return asciiLower(a) == asciiLower(b); });
    return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

std::size_t asSize(std::int64_t value) { return static_cast<std::size_t>(std::max<std::int64_t>(value, 0)); }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string_view leftPart(std::string_view text, std::int64_t length) {
    if (length < 0) throw Error(kNegativeLength, {"left"});
    return text.substr(0, bytePosition(text, asSize(length)));
}

std::string_view rightPart(std::string_view text, std::int64_t length) {
    if (length < 0) throw Error(kNegativeLength, {"right"});
    const std::size_t count = characterCount(text);
    const std::size_t kept = std::min(count, asSize(length));
    return text.substr(bytePosition(text, count - kept));
}

std::string_view substring(std::string_view text, std::int64_t start, std::int64_t length) {
    if (length < 0) throw Error(kNegativeSubstringLength, {"substring"});
    const std::int64_t end = start > INT64_MAX - length ? INT64_MAX : start + length;
    const std::size_t from = bytePosition(text, asSize(start - 1));
    const std::size_t to = bytePosition(text, asSize(end - 1));
    return text.substr(from, to - from);
}

std::string replaceAll(std::string_view text, std::string_view old, std::string_view with) {
    std::string result;
    std::size_t at = 0;
    while (!old.empty()) {
        const std::size_t found = findFolded(text, old, at);
        if (found == std::string_view::npos) break;
        result.append(text, at, found - at);
        result.append(with);
        at = found + old.size();
    }
    return result.append(text.substr(at));
}

std::int64_t charIndex(std::string_view find, std::string_view text, std::int64_t start) {
    if (find.empty()) return 0;
    const std::size_t from = bytePosition(text, asSize(start - 1));
    const std::size_t found = findFolded(text, find, from);
    return found == std::string_view::npos ? 0 : static_cast<std::int64_t>(characterCount(text.substr(0, found))) + 1;
}

std::string reversed(std::string_view text) {
    std::string result(text.size(), '\0');
    std::size_t end = text.size();
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        nextCharacter(text, at);
        end -= at - start;
        std::copy_n(text.data() + start, at - start, result.data() + end);
    }
    return result;
}

std::string replicated(std::string_view text, std::int64_t count) {
    // The server cuts there.
    constexpr std::size_t kMost = kMostVarchar;
    std::string result;
    for (std::int64_t i = 0; i < count && !text.empty() && result.size() < kMost; ++i)
        result.append(text);
    result.resize(codePagePrefix(result, kMost).size());
    return result;
}

std::optional<std::string> stuffed(std::string_view text, std::int64_t start, std::int64_t length,
                                   std::string_view with) {
    if (start < 1 || length < 0 || asSize(start) > characterCount(text)) return std::nullopt;
    const std::size_t from = bytePosition(text, asSize(start - 1));
    const std::size_t count = bytePosition(text.substr(from), asSize(length));
    return std::string(text.substr(0, from)).append(with).append(text.substr(from + count));
}

std::string strOf(double value, std::int64_t length, std::int64_t decimals) {
    const std::size_t width = std::min<std::size_t>(asSize(length), kMostVarchar);
    const std::string stars(width, '*');
    if (!(value < 1e300 && value > -1e300)) return stars;
    int behind = static_cast<int>(std::clamp<std::int64_t>(decimals, 0, 16));
    Decimal number = Decimal::from(value);
    number.round(behind);
    std::string text = number.print(behind);
    // Decimals give way first: str(12345.6, 6, 1) is " 12346", and only str(12345.6, 4, 1) is "****".
    if (text.size() > width) {
        const auto whole = static_cast<int>(text.size()) - (behind > 0 ? behind + 1 : 0);
        behind = std::max(0, static_cast<int>(width) - whole - 1);
        number = Decimal::from(value);
        number.round(behind);
        text = number.print(behind);
    }
    if (text.size() > width) return stars;
    return std::string(width - text.size(), ' ') + text;
}

std::optional<std::string> quotedName(std::string_view text, std::string_view quote) {
    static constexpr std::string_view kPairs[] = {"[]", "''", "\"\"", "()", "<>", "{}", "``"};
    const auto* pair = std::find_if(std::begin(kPairs), std::end(kPairs), [&](std::string_view p) {
        return quote.size() == 1 && p.find(quote[0]) != std::string_view::npos;
    });
    if (pair == std::end(kPairs) || characterCount(text) > 128) return std::nullopt;
    std::string result(1, (*pair)[0]);
    for (const char c : text) {
        result += c;
        if (c == (*pair)[1]) result += c;
    }
    return result + (*pair)[1];
}

std::string soundex(std::string_view text) {
    static constexpr std::string_view kCodes = "01230120022455012623010202";
    std::string result;
    char last = '0';
    for (const char c : text) {
        const char letter = asciiLower(c);
        if (letter < 'a' || letter > 'z') break;
        const char code = kCodes[static_cast<std::size_t>(letter - 'a')];
        if (result.empty()) {
            result = static_cast<char>(letter - 'a' + 'A');
        } else if (code != '0' && code != last) {
            result += code;
        }
        // Two letters of one code count once, also across an h or w: Ashcraft is A261.
        if (letter != 'h' && letter != 'w') last = code;
        if (result.size() == 4) break;
    }
    return result.append(4 - result.size(), '0');
}

bool isNumeric(std::string_view text) {
    std::string_view rest = trimmed(text);
    if (rest.empty()) return false;
    const auto skip = [&rest](std::string_view signs) {
        if (rest.empty() || signs.find(rest.front()) == std::string_view::npos) return false;
        rest.remove_prefix(1);
        return true;
    };
    const auto skipCurrency = [&rest] {
        for (const std::string_view sign : {"$", "¥", "￥", "€", "£"}) {
            if (!rest.starts_with(sign)) continue;
            rest.remove_prefix(sign.size());
            return true;
        }
        return false;
    };
    // The server lets every sign alone pass: '-', '.' and '$' are numbers.
    const bool sign = skip("+-");
    const bool money = skipCurrency();
    if (!sign) skip("+-");
    bool digits = false;
    while (!rest.empty() && (isDigit(rest.front()) || (digits && rest.front() == ','))) {
        digits = true;
        rest.remove_prefix(1);
    }
    const bool point = skip(".");
    while (!rest.empty() && isDigit(rest.front())) {
        digits = true;
        rest.remove_prefix(1);
    }
    if (digits && !money && skip("eEdD")) {
        skip("+-");
        const bool exponent = !rest.empty();
        while (!rest.empty() && isDigit(rest.front()))
            rest.remove_prefix(1);
        return exponent && rest.empty();
    }
    return rest.empty() && (digits || sign || point || money);
}

bool isDate(std::string_view text) {
    if (trimmed(text).empty()) return false;
    try {
        fitted(readDate(text, Kind::datetime), Kind::datetime, "varchar");
        return true;
    } catch (const Error&) {
        return false;
    }
}

std::int64_t dataLength(const Datum& value, const Type& type) {
    if (value.kind == Datum::Kind::blob) return static_cast<std::int64_t>(value.text.size());
    switch (type.kind) {
        case Kind::bit:
        case Kind::tinyint:
            return 1;
        case Kind::smallint:
            return 2;
        case Kind::integer:
        case Kind::real:
        case Kind::smallmoney:
        case Kind::smalldatetime:
            return 4;
        case Kind::bigint:
        case Kind::floating:
        case Kind::money:
        case Kind::datetime:
            return 8;
        case Kind::decimal:
            return type.precision <= 9 ? 5 : type.precision <= 19 ? 9 : type.precision <= 28 ? 13 : 17;
        case Kind::date:
            return 3;
        case Kind::time:
            return 5;
        case Kind::uniqueidentifier:
            return 16;
        default:
            break;
    }
    if (!type.isNationalText()) return static_cast<std::int64_t>(codePageLength(value.text));
    // Two bytes a character, four for one beyond the basic plane.
    const auto wide = std::count_if(value.text.begin(), value.text.end(),
                                    [](char c) { return static_cast<unsigned char>(c) >= 0xF0; });
    return 2 * (static_cast<std::int64_t>(characterCount(value.text)) + wide);
}

}  // namespace orvenmod::store::tsql
