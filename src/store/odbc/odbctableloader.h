// Loads rows into a server's table, each by the table writer's insert.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

namespace orvenmod::store::odbc {

class OdbcTableLoader : public TableLoader {
public:
    /// Throws Failure 208, 207.
    OdbcTableLoader(Connection& connection, std::string_view table, const std::vector<std::string>& fields);

    void add(const Recordset& rows) override;

private:
    void addRow(const Recordset& rows, std::size_t row);

    Connection& connection_;
    std::string table_;
    std::vector<std::string> fields_;
    std::unique_ptr<TableWriter> writer_;
    bool identity_ = false;
};

}  // namespace orvenmod::store::odbc
