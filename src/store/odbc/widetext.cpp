#include "store/odbc/widetext.h"

#include <algorithm>

#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

std::u16string wideText(std::string_view text) {
    std::u16string result;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = tsql::nextCharacter(text, at);
        if (character < 0x10000) {
            result += static_cast<char16_t>(character);
        } else {
            result += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            result += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return result;
}

CharacterSet characterSetOf(SQLSMALLINT type) {
    const bool wide = type == SQL_WCHAR || type == SQL_WVARCHAR || type == SQL_WLONGVARCHAR;
    return wide ? CharacterSet::wide : CharacterSet::codePage;
}

bool isBinary(SQLSMALLINT type) { return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY; }

}  // namespace orvenmod::store::odbc
