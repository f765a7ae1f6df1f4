// Numbers as texts, and texts into the length of their type. The server counts bytes of its code page, where a Chinese
// character has two, and never cuts one in half:
//
//   '中文a' to varchar(3)      中                   1.50 to varchar(10)         1.50: its scale stays
//   '中' to char(4)            中 and two blanks    1e10 to varchar(20)         1e+010
//   $1234.567, style 1         1,234.57
#include <algorithm>
#include <charconv>
#include <cmath>

#include "store/tsql/conversions.h"
#include "store/tsql/error.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

// A number with an exponent, with the three digits that the server gives an exponent.
std::string withThreeDigitExponent(std::string text) {
    const std::size_t at = text.find('e');
    if (at == std::string::npos) return text;
    while (text.size() - at < 5)
        text.insert(at + 2, 1, '0');
    return text;
}

std::string withThousands(std::string text) {
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    const std::size_t point = std::min(text.find('.'), text.size());
    for (std::size_t at = point; at > first + 3; at -= 3)
        text.insert(at - 3, 1, ',');
    return text;
}

}  // namespace

std::string decimalText(const Datum& value, const Type& from, int style) {
    Decimal number = Decimal::from(value);
    const bool money = from.kind != Kind::decimal;
    const int scale = !money ? from.scale : style == 2 || style == 126 ? 4 : 2;
    number.round(scale);
    std::string text = number.print(scale);
    return money && style == 1 ? withThousands(text) : text;
}

std::string floatText(double value, const Type& from, int style) {
    char buffer[64];
    const bool narrow = from.kind == Kind::real;
    const auto print = [&](std::chars_format format, int digits) {
        const char* end = std::to_chars(buffer, buffer + sizeof buffer, value, format, digits).ptr;
        return withThreeDigitExponent({buffer, static_cast<std::size_t>(end - buffer)});
    };
    switch (style) {
        case 1:
            return print(std::chars_format::scientific, 7);
        case 2:
            return print(std::chars_format::scientific, 15);
        case 3:
            return print(std::chars_format::scientific, narrow ? 8 : 16);
        default:
            return print(std::chars_format::general, 6);
    }
}

Datum fittedText(std::string text, const Type& to, const ConvertMode& mode) {
    if (to.length <= 0) return textDatum(std::move(text));
    const auto limit = static_cast<std::size_t>(to.length);
    const bool national = to.isNationalText();
    // A text of fewer bytes than the limit has fewer characters too, and no more bytes in the code page.
    if (text.size() > limit) {
        const std::string_view kept =
            national ? std::string_view(text).substr(0, bytePosition(text, limit)) : codePagePrefix(text, limit);
        // Blanks that don't fit are no loss.
        if (mode.assignment && withoutTrailingBlanks(text).size() > kept.size()) {
            throw Error(kTextTruncated, {mode.table, mode.column, std::string(kept)});
        }
        text.resize(kept.size());
    }
    if (to.kind == Kind::character || to.kind == Kind::nchar) {
        const std::size_t used = national ? characterCount(text) : codePageLength(text);
        if (used < limit) text.append(limit - used, ' ');
    }
    return textDatum(std::move(text));
}

}  // namespace orvenmod::store::tsql
