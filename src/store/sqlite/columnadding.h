// Columns added by making a small table anew.
//
// SQLite's own ALTER TABLE reads the whole schema again: with 500 classes 30 ms, ten times what a whole new class
// costs. Dropping and creating a table concerns that table alone. So among many tables one of few rows is made again,
// with its text as ALTER would leave it, its rows with their ids, and its indexes:
//
//   alter table tblOwn7 add fNew varchar(50)
//
//   CREATE TEMP TABLE "orven.kept"(c0, c1, ..)      no types: what stands in a row comes back as it was
//   INSERT INTO temp."orven.kept" SELECT rowid, ..
//   DROP TABLE main."tblOwn7"
//   CREATE TABLE "tblOwn7"(.., "fNew" varchar(50))
//   INSERT INTO main."tblOwn7"(rowid, ..) SELECT * FROM temp."orven.kept"
//   CREATE INDEX ..
#pragma once

#include <string>
#include <vector>

#include "store/sqlite/database.h"

namespace orvenmod::store::sqlite {

/// Adds columns without a default, which may be null, within a transaction that is open. False, and nothing done, where
/// ALTER TABLE is to do it: the schema is small, the table large, or it is of a kind that can't be made again by its
/// text (a trigger, a counted or computed column). The catalog is to be cleared behind it.
bool addByNewTable(Database& database, const std::string& table, const std::vector<std::string>& definitions);

}  // namespace orvenmod::store::sqlite
