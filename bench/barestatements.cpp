#include "barelist.h"

#include <stdexcept>
#include <utility>

#include "store/sqlite/binding.h"
#include "store/sqlite/database.h"
#include "store/tsql/shape.h"

namespace orvenmod::bench {

struct BareList::Handle {
    Handle(const std::string& connectionString, std::string text)
        : sql(std::move(text)), database(store::sqlite::DatabaseFile::parse(connectionString)) {}

    std::string sql;
    store::tsql::Shape shape;  // views sql
    store::sqlite::Database database;
    store::sqlite::Statement statement;
};

BareList::BareList(const std::string& connectionString, const std::string& sql)
    : handle_(std::make_unique<Handle>(connectionString, sql)) {
    handle_->shape.scan(handle_->sql);
    const auto& translation = handle_->database.prepare(handle_->sql, handle_->shape).translation;
    handle_->statement = handle_->database.prepareNative(translation.statements.at(0));
    store::sqlite::bindLiterals(handle_->statement.get(), translation, handle_->shape);
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
