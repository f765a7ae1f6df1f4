// Loads rows into a table of the embedded store by one prepared insert. Most values are bound where they lie in the
// recordset; what may not fit its column goes by the dialect's conversion.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"
#include "store/sqlite/statement.h"
#include "store/tsql/catalog.h"

namespace orvenmod::store::sqlite {

class SqliteConnection;

class SqliteTableLoader : public TableLoader {
public:
    /// Throws tsql::Error 208, 207.
    SqliteTableLoader(SqliteConnection& connection, std::string_view table, const std::vector<std::string>& fields);

    void add(const Recordset& rows) override;

private:
    void bind(int index, const tsql::ColumnInfo& column, std::string_view value);
    void addRow(const Recordset& rows, std::size_t row);
    [[noreturn]] void fail(int code, const Recordset& rows, std::size_t row);

    SqliteConnection& connection_;
    tsql::ObjectInfo table_;
    std::vector<tsql::ColumnInfo> columns_;
    Statement statement_;
};

}  // namespace orvenmod::store::sqlite
