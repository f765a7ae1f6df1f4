#include "barelist.h"

#include <stdexcept>

#include "store/sqlite/database.h"
#include "store/tsql/shape.h"

namespace orvenmod::bench {

struct BareList::Handle {
    explicit Handle(const std::string& connectionString)
        : database(store::sqlite::DatabaseFile::parse(connectionString)) {}

    store::sqlite::Database database;
    store::sqlite::Statement statement;
};

BareList::BareList(const std::string& connectionString, const std::string& sql)
    : handle_(std::make_unique<Handle>(connectionString)) {
    store::tsql::Shape shape;
    shape.scan(sql);
    const auto& translation = handle_->database.prepare(sql, shape).translation;
    // 1=1 is all that is bound here.
    handle_->statement = handle_->database.prepareNative(translation.statements.at(0));
    for (int i = 1; i <= sqlite3_bind_parameter_count(handle_->statement.get()); ++i) {
        sqlite3_bind_int(handle_->statement.get(), i, 1);
    }
}

BareList::~BareList() = default;

std::size_t BareList::run() {
    sqlite3_stmt* statement = handle_->statement.get();
    const int columns = sqlite3_column_count(statement);
    std::size_t bytes = 0;
    cells_ = 0;
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            const unsigned char* text = sqlite3_column_text(statement, column);
            if (text == nullptr) continue;
            const std::string cell(reinterpret_cast<const char*>(text),
                                   static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
            bytes += cell.size();
        }
        cells_ += static_cast<std::size_t>(columns);
    }
    if (step != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(handle_->database.handle()));
    sqlite3_reset(statement);
    return bytes;
}

}  // namespace orvenmod::bench
