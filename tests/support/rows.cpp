#include "support/rows.h"

namespace orvenmod::test {

Rows rowsOf(store::Connection& connection, const std::string& sql) {
    const store::Recordset found = connection.open(sql);
    Rows all(found.rowCount());
    for (std::size_t row = 0; row < found.rowCount(); ++row) {
        for (int column = 0; column < found.columnCount(); ++column) {
            all[row].emplace_back(found.cell(row, column).value_or("NULL"));
        }
    }
    return all;
}

}  // namespace orvenmod::test
