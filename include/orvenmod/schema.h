// The tables that the component and its suite work on.
#pragma once

#include <string>

namespace orvenmod {

/// Creates the suite's schema in an empty database: tables, keys, indexes, views and fixed rows. A file of the embedded
/// store is made where there is none. Throws std::runtime_error, and leaves the database as it was, where a table
/// exists already or the database can't be written.
void CreateSchema(const std::string& connectionString);

}  // namespace orvenmod
