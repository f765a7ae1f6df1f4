// A database that an earlier version made gets what later ones added. What a schema gains after its first version is a
// numbered list of steps, and the number of the last one that a database has stands in the database itself:
//
//   create table tblOrvenmodVersion(fVersion int not null)      one row; without the table the database is of version 0
//
// A new database is made in its present shape and takes the newest number; an older one runs the steps that it lacks.
// A step can meet a database where somebody did its work by hand. Catalogues differ from store to store, so it asks
// none: whether a table is there, the opening of it tells; an index is dropped, made or not, and created as it has to
// be. A server may end the transaction with the drop that fails; then all of it is run again without that drop:
//
//   drop index tblItem.ix_tblItem_5       fails, and the server undoes what went before
//   create index ix_tblItem_5 ...         3930
//   begin, what went before, create index ix_tblItem_5 ..., what comes behind, commit
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

namespace orvenmod::store {

/// `tellsNothing`: there may have been nothing to do. Servers have kinds and numbers of their own for that; where there
/// was something, the next statement fails.
enum class StepFailure { stops, tellsNothing };

struct StepStatement {
    std::string_view sql;
    StepFailure failure = StepFailure::stops;
    std::string_view madeTable = {};  ///< not run where there is such a table
};

struct UpgradeStep {
    int version;  ///< of a database that has it
    std::vector<StepStatement> statements;
};

inline constexpr std::string_view kVersionTable = "tblOrvenmodVersion";

/// In the order in which they run; the versions go up from 1 by one.
const std::vector<UpgradeStep>& upgradeSteps();

int newestSchemaVersion();

/// The database's. Throws Failure where it isn't the suite's at all.
int schemaVersion(Connection& connection);

/// The statement that notes the version of a database that has none noted.
std::string versionRow(int version);

/// The number of the Failure that refuses a database made by a later version.
inline constexpr int kNewerDatabase = 40101;

/// Brings the database to the newest version, in one transaction; of two at once one does it, the other waits for it,
/// as long as Busy Timeout allows. Throws Failure, and leaves the database as it was, where a step fails, the wait has
/// taken too long or the database is newer than that.
void upgradeSchema(Connection& connection);

}  // namespace orvenmod::store
