// The tables that the component and its suite work on.
#pragma once

#include <string>

#include <orvenmod/export.h>

namespace orvenmod {

/// Creates the suite's schema in an empty database: tables, keys, indexes, views and fixed rows. A file of the embedded
/// store is made where there is none. Throws std::runtime_error, and leaves the database as it was, where a table
/// exists already or the database can't be written.
ORVENMOD_API void CreateSchema(const std::string& connectionString);

/// The statement with which CreateSchema makes a view, for a suite that makes it anew with fields of its own. Throws
/// std::invalid_argument where there is no such view.
ORVENMOD_API std::string SchemaViewText(const std::string& view);

/// The version of a database's schema: 0 for one that was made before versions were noted in it. Throws
/// std::runtime_error where the database can't be read or isn't the suite's.
ORVENMOD_API int SchemaVersion(const std::string& connectionString);

/// The version that CreateSchema makes and UpgradeSchema leads to.
ORVENMOD_API int NewestSchemaVersion();

/// Brings a database that an earlier version made to the newest one: adds what later versions added, in one
/// transaction; nothing where it is the newest. Of two callers at once one does it and the other waits, no longer than
/// Busy Timeout in its connection string says. Throws std::runtime_error, and leaves the database as it was, where that
/// time has passed or the database is newer than this component, can't be written or isn't the suite's.
ORVENMOD_API void UpgradeSchema(const std::string& connectionString);

}  // namespace orvenmod
