#include "store/postgres/postgrestablewriter.h"

#include "store/postgres/postgresconnection.h"
#include "store/tsql/emitter.h"
#include "store/tsql/postgresnames.h"

namespace orvenmod::store::postgres {

PostgresTableWriter::PostgresTableWriter(PostgresConnection& connection, std::string_view table)
    : RowWriter(connection.session().catalog(), table), connection_(connection) {}

void PostgresTableWriter::checkOpen() { connection_.session(); }
tsql::Language PostgresTableWriter::language() const { return connection_.language(); }

std::string PostgresTableWriter::insertText() const {
    const std::string start = "INSERT INTO " + tsql::quoteName(tsql::nativeNameOf(table()));
    if (fields().empty()) return start + " DEFAULT VALUES";
    std::string names;
    std::string places;
    for (const Field& field : fields()) {
        names += (names.empty() ? "" : ",") + tsql::quoteName(tsql::nativeNameOf(columnOf(field)));
        places += (places.empty() ? "$" : ",$") + std::to_string(&field - fields().data() + 1);
    }
    return start + "(" + names + ") VALUES(" + places + ")";
}

Parameters PostgresTableWriter::parameters() const {
    Parameters result;
    for (const Field& field : fields()) {
        if (field.bytes) {
            result.addBinary(*field.bytes);
        } else {
            result.addText(valueOf(field), field.text.value_or(""), columnOf(field).type);
        }
    }
    return result;
}

void PostgresTableWriter::store() {
    std::string text = insertText();
    if (text != preparedText_ || !connection_.session().has(statement_)) {
        statement_ = connection_.session().newStatement();
        preparedText_ = text;
    }
    connection_.storeRow(statement_, text, parameters(),
                         [this](const std::string& column) { return newValue(column); });
}

}  // namespace orvenmod::store::postgres
