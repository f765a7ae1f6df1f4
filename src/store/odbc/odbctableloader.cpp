#include "store/odbc/odbctableloader.h"

#include <memory>

#include "store/odbc/odbcconnection.h"
#include "store/odbc/odbcoutline.h"
#include "store/odbc/rowsinsert.h"
#include "store/odbc/widetext.h"

namespace orvenmod::store::odbc {

OdbcTableLoader::OdbcTableLoader(OdbcConnection& connection, std::string_view table,
                                 const std::vector<std::string>& fields)
    : connection_(connection), table_(table), writer_(connection, table) {
    for (const std::string& field : fields)
        columns_.push_back(writer_.column(field));
    identity_ = hasIdentity(connection, table, fields);
}

void OdbcTableLoader::checkTexts(const Recordset& rows, std::size_t row) const {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const int place = static_cast<int>(i);
        const Value value = rows.cell(row, place);
        if (!value || rows.columns()[i].type == ColumnType::binary) continue;
        try {
            connection_.checkText(*value, characterSetOf(columns_[i].type));
        } catch (const Failure& failure) {
            throw RowFailure(failure, row, place);
        }
    }
}

void OdbcTableLoader::addRow(const Recordset& rows, std::size_t row) {
    writer_.addNew();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const std::string& field = columns_[i].name;
        const Value value = rows.cell(row, static_cast<int>(i));
        if (!value) {
            writer_.setNull(field);
        } else if (rows.columns()[i].type == ColumnType::binary) {
            writer_.setBinary(field, std::as_bytes(std::span(*value)));
        } else {
            writer_.set(field, *value);
        }
    }
    try {
        writer_.update();
    } catch (const Failure& failure) {
        throw RowFailure(failure, row);
    }
}

// False where the driver takes no blocks.
bool OdbcTableLoader::addBlock(const Recordset& rows, std::size_t first, std::size_t count) {
    for (std::size_t row = first; row < first + count; ++row)
        checkTexts(rows, row);
    const auto work = std::make_shared<InsertOfRows>(connection_.statement(), writer_.insertText(columns_), columns_,
                                                     rows, first, count);
    try {
        connection_.run(work);
    } catch (const Failure& failure) {
        if (work->failedRow()) throw RowFailure(failure, first + *work->failedRow());
        throw;
    }
    return work->isTaken();
}

void OdbcTableLoader::addAll(const Recordset& rows) {
    for (std::size_t row = 0; row < rows.rowCount();) {
        const std::size_t count = blocks_ ? rowsOfBlock(rows, row) : 0;
        if (count > 0) blocks_ = addBlock(rows, row, count);
        if (count > 0 && blocks_) {
            row += count;
        } else {
            addRow(rows, row++);
        }
    }
}

void OdbcTableLoader::add(const Recordset& rows) {
    // A server keeps one table at a time open for given numbers.
    if (identity_) connection_.execute("set identity_insert " + table_ + " on");
    addAll(rows);
    if (identity_) connection_.execute("set identity_insert " + table_ + " off");
}

}  // namespace orvenmod::store::odbc
