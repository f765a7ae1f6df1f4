// Many rows as the parameters of one insert, column by column, as a driver takes them. It sends them in one go, where
// row after row would wait for the server each time.
//
//   fName    [abc·····][中文····]   lengths [3][4]
//   fPrice   [1.5·····][········]   lengths [3][null]
//
// A row with a value too long for such a block goes alone, by the table writer.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "store/odbc/odbctablewriter.h"
#include "store/odbc/odbcwork.h"
#include "store/recordset.h"

namespace orvenmod::store::odbc {

/// How many rows from `first` on go together; 0 where that one has to go alone.
std::size_t rowsOfBlock(const Recordset& rows, std::size_t first);

class InsertOfRows : public OdbcWork {
public:
    /// Copies `count` rows from `first` on, whose cells belong to the columns at their places.
    InsertOfRows(OdbcHandle statement, std::string insert, const std::vector<OdbcTableWriter::Column>& columns,
                 const Recordset& rows, std::size_t first, std::size_t count);

    void run() override;
    /// False where the driver takes one row at a time; nothing was stored then.
    bool isTaken() const { return taken_; }
    /// The row that failed, from 0, of those of the block; none where the driver doesn't tell.
    std::optional<std::size_t> failedRow() const { return failedRow_; }

private:
    struct Values {
        SQLSMALLINT form = SQL_C_CHAR;
        SQLSMALLINT type = SQL_VARCHAR;
        std::size_t characters = 1;  ///< of the longest value
        std::size_t width = 1;       ///< bytes of a place
        std::vector<char> bytes;
        std::vector<SQLLEN> lengths;
    };

    void take(const OdbcTableWriter::Column& column, const Recordset& rows, int place, std::size_t first);
    void bind();
    void checkRows(SQLRETURN result);

    std::string insert_;
    std::vector<Values> values_;
    std::vector<SQLUSMALLINT> states_;  // one a row
    bool taken_ = true;
    std::optional<std::size_t> failedRow_;
};

}  // namespace orvenmod::store::odbc
