// The schema of the suite's database as data: every table that the system reads or writes, its own (group A) and the
// suite's (group B), with keys and indexes fit for a million items.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "store/connection.h"

namespace orvenmod::store {

/// For SchemaColumn::notNull.
inline constexpr bool kNotNull = true;

struct SchemaColumn {
    std::string_view name;
    std::string_view type;  ///< as the dialect writes it, e.g. "varchar(100)"
    bool notNull = false;
};

struct SchemaIndex {
    std::string_view columns;  ///< "fItemClassId,fNumber"
    bool unique = false;
    std::string_view included = {};  ///< columns that it carries along, so that a statement needs no row
};

struct SchemaTable {
    std::string_view name;
    char group;  ///< 'A' the system's own, 'B' the suite's
    std::vector<SchemaColumn> columns;
    std::string_view primaryKey;  ///< "" for none
    std::vector<SchemaIndex> indexes;
};

struct SchemaView {
    std::string_view name;
    std::string_view text;  ///< the whole create statement
};

const std::vector<SchemaTable>& schemaTables();
const std::vector<SchemaView>& schemaViews();

/// Creates tables, indexes, views and fixed rows in one transaction. Throws Failure 2714 where a table exists already,
/// and then leaves the database as it was.
void createSchema(Connection& connection);

}  // namespace orvenmod::store
