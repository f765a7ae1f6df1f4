// From the dialect's text to a target's: scan, parse, bind to the catalog, emit.
//
//   select fname from tblItem where fnumber='A01'
//
//   SELECT "tblItem"."fname" FROM "tblItem" AS "tblItem" WHERE (rtrim("tblItem"."fnumber") COLLATE NOCASE = ?1)
//   ?1  literal 0, varchar(3) to varchar(8000), trimmed
//   column fname varchar(80)
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/tsql/catalog.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::tsql {

/// Translates one statement. Throws Error: 102, 105, 156 for a text that is none, 207, 208, 195 ... for names that do
/// not exist, kNotSupported for what this store doesn't know.
Translation translateForSqlite(std::string_view sql, const Catalog& catalog);

/// The same for PostgreSQL, whose text calls what its runtime in the schema orven has (postgres_emitter.h).
Translation translateForPostgres(std::string_view sql, const Catalog& catalog);

/// The dialect's text of a view from the text that SQLite keeps of it (sqlite_master.sql); empty for a view that
/// was not made here.
std::string storedViewText(std::string_view storedSql);

/// The columns that a view has, from its dialect text ("create view v as select ...").
/// Throws Error where the view no longer fits the catalog.
std::vector<ColumnInfo> viewColumns(std::string_view viewText, const Catalog& catalog);

}  // namespace orvenmod::store::tsql
