#include "bareloop.h"

#include <list>
#include <stdexcept>

#include "store/sqlite/binding.h"
#include "store/sqlite/database.h"
#include "store/tsql/shape.h"

namespace orvenmod::bench {
namespace {

using store::tsql::StatementKind;

struct Prepared {
    std::string sql;
    store::tsql::Shape shape;  // views the text
    store::tsql::Translation translation;
    store::sqlite::Statement statement;
};

std::string nativeText(const store::tsql::Translation& translation) {
    if (translation.kind == StatementKind::beginTransaction) return "begin immediate";
    if (translation.kind == StatementKind::commitTransaction) return "commit";
    return translation.statements.at(0);
}

std::size_t copyRow(sqlite3_stmt* statement, int columns) {
    std::size_t bytes = 0;
    for (int column = 0; column < columns; ++column) {
        const unsigned char* text = sqlite3_column_text(statement, column);
        if (text == nullptr) continue;
        const std::string cell(reinterpret_cast<const char*>(text),
                               static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
        bytes += cell.size();
    }
    return bytes;
}

}  // namespace

struct BareLoop::Handle {
    explicit Handle(const std::string& connectionString)
        : database(store::sqlite::DatabaseFile::parse(connectionString)) {}

    store::sqlite::Database database;
    std::list<Prepared> prepared;
};

BareLoop::BareLoop(const std::string& connectionString, const std::vector<std::string>& statements)
    : handle_(std::make_unique<Handle>(connectionString)) {
    for (const std::string& sql : statements) {
        Prepared& each = handle_->prepared.emplace_back();
        each.sql = sql;
        each.shape.scan(each.sql);
        each.translation = handle_->database.prepare(each.sql, each.shape).translation;
        each.statement = handle_->database.prepareNative(nativeText(each.translation));
    }
}

BareLoop::~BareLoop() = default;

std::size_t BareLoop::run() {
    std::size_t bytes = 0;
    cells_ = 0;
    for (Prepared& each : handle_->prepared) {
        sqlite3_stmt* statement = each.statement.get();
        store::sqlite::bindLiterals(statement, each.translation, each.shape);
        const int columns = sqlite3_column_count(statement);
        int step = SQLITE_ROW;
        while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
            bytes += copyRow(statement, columns);
            cells_ += static_cast<std::size_t>(columns);
        }
        if (step != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(handle_->database.handle()));
        sqlite3_reset(statement);
    }
    return bytes;
}

}  // namespace orvenmod::bench
