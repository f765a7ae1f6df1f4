// Adds rows to a table of the embedded store. Binary contents are bound where they lie, without a copy.
//
// No text of the dialect is written and translated, since a photo as a literal would be twice its size; the row is an
// insert of the target's own, prepared once for rows of the same fields:
//
//   addNew; set("fitemid", "9"); setBinary("fPhoto", bytes); update
//   INSERT INTO "ICItemPhoto"("fitemid","fPhoto") VALUES(?,?)
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"
#include "store/sqlite/statement.h"
#include "store/tsql/catalog.h"

namespace orvenmod::store::sqlite {

class SqliteConnection;

class SqliteTableWriter : public TableWriter {
public:
    /// Throws tsql::Error 208 for a table that does not exist.
    SqliteTableWriter(SqliteConnection& connection, std::string_view table);

    void addNew() override;
    void set(std::string_view field, std::string_view text) override;
    void setNull(std::string_view field) override;
    void setBinary(std::string_view field, std::span<const std::byte> bytes) override;
    void update() override;

private:
    struct Field {
        std::size_t column = 0;
        std::optional<std::string> text;
        std::optional<std::span<const std::byte>> bytes;
    };

    Field& field(std::string_view name);
    std::vector<std::string> fieldNames() const;
    void bind(sqlite3_stmt* statement) const;
    void store();
    std::string valueOf(const std::string& column) const;

    SqliteConnection& connection_;
    std::string table_;
    std::vector<tsql::ColumnInfo> columns_;
    std::vector<Field> fields_;
    bool begun_ = false;
    std::string preparedText_;
    Statement statement_;
};

}  // namespace orvenmod::store::sqlite
