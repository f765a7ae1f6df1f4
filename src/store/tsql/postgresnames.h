// What PostgreSQL calls a table, a column, an index and a type of the dialect.
//
//   tblItem                      tblitem: an administrator types it without quotes
//   tblItem's index number       tblitem.number: all indexes of a schema share one name space
//   a name of 70 bytes           its first 54 bytes and a hash: PostgreSQL takes 63
#pragma once

#include <string>
#include <string_view>

#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

/// Within the comment of a column or a check, what parts its declaration from the dialect's own text of its default or
/// its condition.
inline constexpr const char* kCommentBreak = "\n";

/// Without quotes.
std::string nativeName(std::string_view declared);
/// Of what is there, where it may have been made by hand.
template <typename Info>
std::string nativeNameOf(const Info& info) {
    return info.nativeName.empty() ? nativeName(info.name) : info.nativeName;
}

/// The type of a column: "numeric(18,4)", "timestamp(3)".
std::string nativeColumnType(const Type& type);
/// The type that values of such a column have within an expression: "numeric", "timestamp".
std::string nativeType(const Type& type);

}  // namespace orvenmod::store::tsql
