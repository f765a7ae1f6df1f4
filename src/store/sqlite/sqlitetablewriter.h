// Adds rows to a table of the embedded store. Binary contents are bound where they lie, without a copy.
//
// No text of the dialect is written and translated, since a photo as a literal would be twice its size; the row is an
// insert of the target's own, prepared once for rows of the same fields:
//
//   addNew; set("fitemid", "9"); setBinary("fPhoto", bytes); update
//   INSERT INTO "ICItemPhoto"("fitemid","fPhoto") VALUES(?,?)
#pragma once

#include <string>
#include <string_view>

#include "store/sqlite/statement.h"
#include "store/tsql/rowwriter.h"

namespace orvenmod::store::sqlite {

class SqliteConnection;

class SqliteTableWriter : public tsql::RowWriter {
public:
    /// Throws tsql::Error 208 for a table that does not exist.
    SqliteTableWriter(SqliteConnection& connection, std::string_view table);

private:
    void checkOpen() override;
    tsql::Language language() const override;
    void store() override;
    std::vector<std::string> fieldNames() const;
    void bind(sqlite3_stmt* statement) const;
    void storeOnce();

    SqliteConnection& connection_;
    std::string preparedText_;
    Statement statement_;
};

}  // namespace orvenmod::store::sqlite
