#include "store/odbc/odbctableloader.h"

#include "store/bracketed.h"
#include "store/odbc/odbcoutline.h"

namespace orvenmod::store::odbc {

OdbcTableLoader::OdbcTableLoader(Connection& connection, std::string_view table, const std::vector<std::string>& fields)
    : connection_(connection),
      table_(table),
      fields_(fields),
      writer_(connection.openTable(table)),
      identity_(hasIdentity(connection, table, fields)) {}

void OdbcTableLoader::addRow(const Recordset& rows, std::size_t row) {
    writer_->addNew();
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const int column = static_cast<int>(i);
        const Value value = rows.cell(row, column);
        if (!value) {
            writer_->setNull(fields_[i]);
        } else if (rows.columns()[i].type == ColumnType::binary) {
            writer_->setBinary(fields_[i], std::as_bytes(std::span(*value)));
        } else {
            writer_->set(fields_[i], *value);
        }
    }
    try {
        writer_->update();
    } catch (const Failure& failure) {
        throw RowFailure(failure, row);
    }
}

void OdbcTableLoader::add(const Recordset& rows) {
    // A server keeps one table at a time open for given numbers.
    if (identity_) connection_.execute("set identity_insert " + bracketed(table_) + " on");
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        addRow(rows, row);
    if (identity_) connection_.execute("set identity_insert " + bracketed(table_) + " off");
}

}  // namespace orvenmod::store::odbc
