#include "store/sqlite/sqlitetablewriter.h"

#include "store/sqlite/binding.h"
#include "store/sqlite/rowinsert.h"
#include "store/sqlite/sqliteconnection.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/error.h"

namespace orvenmod::store::sqlite {

SqliteTableWriter::SqliteTableWriter(SqliteConnection& connection, std::string_view table)
    : RowWriter(connection.database().catalog(), table), connection_(connection) {}

void SqliteTableWriter::checkOpen() { connection_.database(); }
tsql::Language SqliteTableWriter::language() const { return connection_.database().file().language; }

std::vector<std::string> SqliteTableWriter::fieldNames() const {
    std::vector<std::string> names;
    for (const Field& field : fields())
        names.push_back(columnOf(field).name);
    return names;
}

void SqliteTableWriter::bind(sqlite3_stmt* statement) const {
    int index = 0;
    for (const Field& field : fields()) {
        ++index;
        if (!field.bytes) {
            bindDatum(statement, index, valueOf(field));
        } else if (field.bytes->empty()) {
            // Contents without a byte have no address, and a null pointer would bind a null.
            checkBound(sqlite3_bind_zeroblob(statement, index, 0));
        } else {
            checkBound(sqlite3_bind_blob64(statement, index, field.bytes->data(), field.bytes->size(), SQLITE_STATIC));
        }
    }
}

void SqliteTableWriter::storeOnce() {
    Database& database = connection_.database();
    std::string text = insertText(table().name, fieldNames());
    for (bool again = false;; again = true) {
        if (again || text != preparedText_) {
            statement_ = database.prepareNative(text);
            preparedText_ = text;
        }
        const ResetStatement reset(statement_.get());
        bind(statement_.get());
        if (sqlite3_step(statement_.get()) == SQLITE_DONE) return;
        const int code = sqlite3_reset(statement_.get());
        if ((code & 0xFF) == SQLITE_SCHEMA && !again) continue;
        if ((code & 0xFF) == SQLITE_CONSTRAINT) {
            throw constraintFailure(database.handle(), code, database.file(), "INSERT",
                                    [this](const std::string& column) { return newValue(column); });
        }
        database.fail(code);
    }
}

void SqliteTableWriter::store() {
    connection_.database().runtime().startStatement();
    connection_.storeRow([this] { storeOnce(); });
}

}  // namespace orvenmod::store::sqlite
