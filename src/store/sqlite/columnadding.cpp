#include "store/sqlite/columnadding.h"

#include <algorithm>

#include "store/sqlite/createtext.h"
#include "store/tsql/emitter.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::quoteName;

/// Below that ALTER TABLE takes no longer than a new class.
constexpr int kManyObjects = 500;
constexpr int kFewRows = 1000;

constexpr const char* kSavepoint = "SAVEPOINT columns";
constexpr const char* kRelease = "RELEASE columns";
constexpr const char* kRollbackTo = "ROLLBACK TO columns";
constexpr const char* kKept = "temp.\"orven.kept\"";

class Renewal {
public:
    Renewal(Database& database, const std::string& table) : database_(database), table_(table) {}

    bool isWanted() {
        if (number("SELECT count(*) FROM sqlite_master") < kManyObjects) return false;
        return isPlain() && number("SELECT count(*) FROM (SELECT 1 FROM main." + quoteName(table_) + " LIMIT " +
                                   std::to_string(kFewRows + 1) + ")") <= kFewRows;
    }

    void run(const std::vector<std::string>& definitions) {
        const std::vector<std::string> indexes = texts(
            "SELECT sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL AND tbl_name = ?1 ORDER BY rowid");
        std::string added;
        for (const std::string& definition : definitions)
            added += ", " + definition;
        std::string created = sql_;
        created.insert(endOfColumns(sql_), added);
        std::string names = "rowid";
        std::string kept = "c0";
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            names += ", " + quoteName(columns_[i]);
            kept += ", c" + std::to_string(i + 1);
        }
        const std::string table = "main." + quoteName(table_);
        execute(std::string("CREATE TABLE ") + kKept + "(" + kept + ")");
        execute(std::string("INSERT INTO ") + kKept + " SELECT " + names + " FROM " + table);
        execute("DROP TABLE " + table);
        execute(created);
        execute("INSERT INTO " + table + "(" + names + ") SELECT * FROM " + kKept + " ORDER BY c0");
        for (const std::string& index : indexes)
            execute(index);
        execute(std::string("DROP TABLE ") + kKept);
    }

private:
    /// Whether its text says all that there is to say of it.
    bool isPlain() {
        const std::vector<std::string> found =
            texts("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ?1");
        if (found.size() != 1 || endOfColumns(found[0]) == 0) return false;
        sql_ = found[0];
        const std::string folded = tsql::lowerName(sql_);
        for (const char* word : {"autoincrement", "references", "generated"}) {
            if (folded.find(word) != std::string::npos) return false;
        }
        if (!texts("SELECT name FROM sqlite_master WHERE type = 'trigger' AND tbl_name = ?1").empty()) return false;
        // Contents of any size would have to be held meanwhile, and a column of that name would hide the id.
        if (!texts(
                 "SELECT name FROM pragma_table_xinfo(?1) WHERE hidden <> 0 OR lower(name) = 'rowid' OR lower(type) IN "
                 "('image', 'text', 'ntext') OR type LIKE '%max%' OR type LIKE '%blob%' OR type = ''")
                 .empty())
            return false;
        columns_ = texts("SELECT name FROM pragma_table_xinfo(?1)");
        return true;
    }

    void execute(const std::string& text) {
        const Statement statement = database_.prepareLasting(text);
        finish(statement.get(), sqlite3_step(statement.get()));
    }

    void finish(sqlite3_stmt* statement, int code) {
        if (code != SQLITE_DONE) database_.fail(sqlite3_reset(statement));
    }

    std::vector<std::string> texts(const std::string& sql) {
        const Statement statement = database_.prepareLasting(sql);
        if (sqlite3_bind_parameter_count(statement.get()) > 0)
            sqlite3_bind_text(statement.get(), 1, table_.data(), static_cast<int>(table_.size()), SQLITE_STATIC);
        std::vector<std::string> all;
        int code = SQLITE_ROW;
        while ((code = sqlite3_step(statement.get())) == SQLITE_ROW) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
            all.emplace_back(text == nullptr ? "" : text);
        }
        finish(statement.get(), code);
        return all;
    }

    int number(const std::string& sql) { return std::stoi(texts(sql).at(0)); }

    Database& database_;
    const std::string& table_;
    std::string sql_;
    std::vector<std::string> columns_;
};

}  // namespace

bool addByNewTable(Database& database, const std::string& table, const std::vector<std::string>& definitions) {
    Renewal renewal(database, table);
    if (!renewal.isWanted()) return false;
    database.run(kSavepoint);
    try {
        renewal.run(definitions);
        database.run(kRelease);
        return true;
    } catch (const Failure&) {
        // Rows that another program stored past a check, say. A full disk fails ALTER TABLE as well, which tells it.
        if (sqlite3_get_autocommit(database.handle()) != 0) throw;
        database.tryRun(kRollbackTo);
        database.tryRun(kRelease);
        return false;
    }
}

}  // namespace orvenmod::store::sqlite
