// Loads rows into a server's table: many by one insert where the driver can, else each by the table writer.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/odbc/odbctablewriter.h"

namespace orvenmod::store::odbc {

class OdbcTableLoader : public TableLoader {
public:
    /// Throws Failure 208, 207.
    OdbcTableLoader(OdbcConnection& connection, std::string_view table, const std::vector<std::string>& fields);

    void add(const Recordset& rows) override;

private:
    void addAll(const Recordset& rows);
    void checkTexts(const Recordset& rows, std::size_t row) const;
    bool addBlock(const Recordset& rows, std::size_t first, std::size_t count);
    void addRow(const Recordset& rows, std::size_t row);

    OdbcConnection& connection_;
    std::string table_;
    OdbcTableWriter writer_;
    std::vector<OdbcTableWriter::Column> columns_;  // of the fields
    bool identity_ = false;
    bool blocks_ = true;  // until the driver says that it can't
};

}  // namespace orvenmod::store::odbc
