// What the ways of adding rows to a table of the embedded store share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/sqlite/database.h"
#include "store/tsql/catalog.h"

namespace orvenmod::store::sqlite {

/// The table of that name, with "dbo." before it or without. Throws tsql::Error 208 where there is none.
const tsql::ObjectInfo& tableNamed(Database& database, std::string_view name);

/// INSERT INTO "t"("a","b") VALUES(?,?)
std::string insertText(const std::string& table, const std::vector<std::string>& columns);

}  // namespace orvenmod::store::sqlite
