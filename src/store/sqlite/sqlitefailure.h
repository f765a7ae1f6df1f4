// What SQLite reports, as the server would word it.
//
// SQLite tells a code and an English sentence, from which table, column and constraint are taken:
//
//   NOT NULL constraint failed: k.b                              515 with b, k
//   UNIQUE constraint failed: index 'k.constraint.pk.PK__k__a'   2627 with PRIMARY KEY, PK__k__a, k and the new values
//   UNIQUE constraint failed: p.id                               2627: a key of the table's own
//   UNIQUE constraint failed: t.id                               2601 with t, ui and the new values, where an index of
//                                                                that column has them: it is looked for by the column
//   at most 64 tables in a join                                  106
#pragma once

#include <sqlite3.h>

#include <string>

#include "store/failure.h"
#include "store/sqlite/databasefile.h"
#include "store/sqlite/statementcache.h"

namespace orvenmod::store::sqlite {

/// The failure of the handle's last call, which gave `code` (extended). The handle may be null where it could not be
/// made.
Failure failureOf(sqlite3* handle, int code, const DatabaseFile& file);

/// A constraint that refused a row: 2627, 2601, 515, 547.
/// `statement` is "INSERT" or "UPDATE"; `values` gives the text of a column's new value, as far as it is known.
template <typename Values>
Failure constraintFailure(sqlite3* handle, int code, const DatabaseFile& file, const char* statement, Values values);

/// A constraint's message taken apart.
struct ConstraintReport {
    std::string table;
    std::string index;                 ///< of a unique index
    std::vector<std::string> columns;  ///< of the key, or the column that may not be null
    std::string constraint;            ///< the server's name for it
    bool key = false;                  ///< a primary key or unique constraint (2627), else a unique index (2601)
    bool primary = false;
};
ConstraintReport constraintReport(sqlite3* handle, int code);
Failure worded(const ConstraintReport& report, int code, const DatabaseFile& file, const char* statement,
               const std::string& key);

template <typename Values>
Failure constraintFailure(sqlite3* handle, int code, const DatabaseFile& file, const char* statement, Values values) {
    const ConstraintReport report = constraintReport(handle, code);
    std::string key;
    for (const std::string& column : report.columns) {
        key += key.empty() ? "(" : ", ";
        key += values(column);
    }
    return worded(report, code, file, statement, key + ")");
}

}  // namespace orvenmod::store::sqlite
