// How a view keeps its dialect text: in a comment of the view itself, so that it is one with the view and its
// transaction. A check and a default that is computed keep theirs likewise.
//
//   CREATE VIEW "v" AS /*orven create view v as select ...*/ SELECT ...
//   CHECK (rtrim("c") COLLATE NOCASE <> '' /*orven c<>''*/)
//
// Within the comment a backslash is doubled and the end of a comment is written as *\/.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::store::tsql {

/// The comment that keeps the text.
std::string keptViewText(std::string_view sql);

/// SQLite's own text of the query from the text that it keeps of the view (sqlite_master.sql); empty for a view that
/// was not made here.
std::string storedViewQuery(std::string_view storedSql);

}  // namespace orvenmod::store::tsql
