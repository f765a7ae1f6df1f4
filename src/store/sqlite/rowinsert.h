// What the ways of adding rows to a table of the embedded store share.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::store::sqlite {

/// INSERT INTO "t"("a","b") VALUES(?,?)
std::string insertText(const std::string& table, const std::vector<std::string>& columns);

}  // namespace orvenmod::store::sqlite
