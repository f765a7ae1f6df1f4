// Texts as wide characters, in which every character reaches a server.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>

namespace orvenmod::store::odbc {

bool isAscii(std::string_view text);
/// UTF-8 as UTF-16.
std::u16string wideText(std::string_view text);

/// Of what a column can hold.
enum class CharacterSet { codePage, wide };

/// Of a column, by ODBC's number of its type.
CharacterSet characterSetOf(SQLSMALLINT type);
bool isBinary(SQLSMALLINT type);

}  // namespace orvenmod::store::odbc
