#include "support/dump.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace orvenmod::test {

namespace {

class RawDatabase {
public:
    explicit RawDatabase(const std::string& file) {
        sqlite3* made = nullptr;
        const int code = sqlite3_open_v2(file.c_str(), &made, SQLITE_OPEN_READWRITE, nullptr);
        handle_.reset(made);
        if (code != SQLITE_OK) throw std::runtime_error("can't open " + file);
    }

    /// Each row's cells, separated by bars; views are left alone, since they use functions of the component.
    std::vector<std::string> rows(const std::string& sql) {
        sqlite3_stmt* made = nullptr;
        if (sqlite3_prepare_v2(handle_.get(), sql.c_str(), -1, &made, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(handle_.get()));
        }
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(made, sqlite3_finalize);
        std::vector<std::string> all;
        while (sqlite3_step(made) == SQLITE_ROW) {
            std::string row;
            for (int column = 0; column < sqlite3_column_count(made); ++column) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(made, column));
                row.append(text == nullptr ? "NULL" : text).append("|");
            }
            all.push_back(std::move(row));
        }
        return all;
    }

private:
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle_{nullptr, sqlite3_close};
};

}  // namespace

std::string dumpOf(const std::string& file) {
    RawDatabase database(file);
    std::string text;
    for (const std::string& row : database.rows("select type,name,sql from sqlite_master order by type,name")) {
        text += row + "\n";
    }
    for (std::string table : database.rows("select name from sqlite_master where type='table' order by name")) {
        table.pop_back();
        for (const std::string& row : database.rows("select * from \"" + table + "\" order by rowid")) {
            text.append(table).append(": ").append(row).append("\n");
        }
    }
    return text;
}

std::string integrityOf(const std::string& file) {
    std::string text;
    for (const std::string& row : RawDatabase(file).rows("pragma integrity_check"))
        text += (text.empty() ? "" : "\n") + row.substr(0, row.size() - 1);
    return text;
}

std::string planOf(const std::string& file, const std::string& nativeSql) {
    std::string text;
    for (const std::string& row : RawDatabase(file).rows("explain query plan " + nativeSql))
        text += row + "\n";
    return text;
}

}  // namespace orvenmod::test
