// How a view keeps its dialect text: in a comment of the view itself, so that it is one with the view and its
// transaction.
//
//   CREATE VIEW "v" AS /*orven create view v as select ...*/ SELECT ...
//
// Within the comment a backslash is doubled and the end of a comment is written as *\/.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::store::tsql {

/// The comment that keeps the text.
std::string keptViewText(std::string_view sql);

}  // namespace orvenmod::store::tsql
