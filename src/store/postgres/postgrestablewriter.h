// Adds rows to a table of a PostgreSQL database. Binary contents go out where they lie, without a copy.
//
// No text of the dialect is written and translated, since a photo as a literal would be twice its size; the row is an
// insert of the server's own, prepared once for rows of the same fields:
//
//   addNew; set("fitemid", "9"); setBinary("fPhoto", bytes); update
//   INSERT INTO "icitemphoto"("fitemid","fphoto") VALUES($1,$2)
#pragma once

#include <string>
#include <string_view>

#include "store/postgres/session.h"
#include "store/tsql/rowwriter.h"

namespace orvenmod::store::postgres {

class PostgresConnection;

class PostgresTableWriter : public tsql::RowWriter {
public:
    /// Throws tsql::Error 208 for a table that does not exist.
    PostgresTableWriter(PostgresConnection& connection, std::string_view table);

private:
    void checkOpen() override;
    tsql::Language language() const override;
    void store() override;
    std::string insertText() const;
    Parameters parameters() const;

    PostgresConnection& connection_;
    std::string preparedText_;
    Prepared statement_;
};

}  // namespace orvenmod::store::postgres
