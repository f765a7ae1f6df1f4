// A database that an earlier version made gets what later ones added. What a schema gains after its first version is a
// numbered list of steps, and the number of the last one that a database has stands in the database itself:
//
//   create table tblOrvenmodVersion(fVersion int not null)      one row; without the table the database is of version 0
//
// A new database is made in its present shape and takes the newest number; an older one runs the steps that it lacks.
// A step can meet a database where somebody did its work by hand. Catalogues differ from store to store, so it asks
// none: an index is dropped, made or not, and created as it has to be; "no such index" says that there was none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

namespace orvenmod::store {

struct StepStatement {
    std::string_view sql;
    int nothingToDo = 0;  ///< number of the failure by which the store says that it was so before; 0 for none
};

struct UpgradeStep {
    int version;  ///< of a database that has it
    std::vector<StepStatement> statements;
};

/// In the order in which they run; the versions go up from 1 by one.
const std::vector<UpgradeStep>& upgradeSteps();

int newestSchemaVersion();

/// The database's. Throws Failure 208 where it isn't the suite's at all.
int schemaVersion(Connection& connection);

/// The statement that notes the version of a database that has none noted.
std::string versionRow(int version);

/// The number of the Failure that refuses a database made by a later version.
inline constexpr int kNewerDatabase = 40101;

/// Brings the database to the newest version, in one transaction; of two at once one does it, the other waits for it.
/// Throws Failure, and leaves the database as it was, where a step fails or the database is newer than that.
void upgradeSchema(Connection& connection);

}  // namespace orvenmod::store
