// Loads rows into a table of a PostgreSQL database by COPY, a part of them at a time.
//
//   COPY "tblitem"("fitemid","fname") FROM STDIN
//   1	螺丝 \n\N ...       tabs between, a line a row, \N for null
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"
#include "store/tsql/catalog.h"

namespace orvenmod::store::postgres {

class PostgresConnection;

class PostgresTableLoader : public TableLoader {
public:
    /// Throws tsql::Error 208, 207.
    PostgresTableLoader(PostgresConnection& connection, std::string_view table, const std::vector<std::string>& fields);

    void add(const Recordset& rows) override;

private:
    void write(std::string_view value, const tsql::ColumnInfo& column);

    PostgresConnection& connection_;
    tsql::ObjectInfo table_;
    std::vector<tsql::ColumnInfo> columns_;
    std::string command_;
    std::string text_;  // of the rows
};

}  // namespace orvenmod::store::postgres
