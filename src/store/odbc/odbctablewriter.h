// Adds rows to a server's table by an insert statement with bound values; binary contents are streamed.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "store/connection.h"
#include "store/odbc/odbchandle.h"

namespace orvenmod::store::odbc {

class OdbcConnection;

class OdbcTableWriter : public TableWriter {
public:
    /// `table` as a statement names it: name, owner.name, [name]. Throws Failure 208 for one that does not exist.
    OdbcTableWriter(OdbcConnection& connection, std::string_view table);

    void addNew() override;
    void set(std::string_view field, std::string_view text) override;
    void setNull(std::string_view field) override;
    void setBinary(std::string_view field, std::span<const std::byte> bytes) override;
    void update() override;

    struct Column {
        std::string name;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
    };
    struct Field {
        Column column;
        std::optional<std::string> text;
        std::u16string wide;  ///< the text, where it is more than ASCII
        std::optional<std::span<const std::byte>> bytes;
        std::vector<std::byte> own;  ///< a copy of these, where they don't go in pieces
        SQLLEN indicator = 0;
    };

    // For the loader.

    /// Throws Failure 207.
    const Column& column(std::string_view name) const;
    /// An insert with a parameter a column.
    std::string insertText(const std::vector<Column>& columns) const;

private:
    void readColumns();
    Field& field(std::string_view name);

    OdbcConnection& connection_;
    std::vector<std::string> name_;  // the table's; in front of it the owner and the database where they are told
    std::string quotedName_;
    std::vector<Column> columns_;
    std::vector<Field> fields_;
    bool begun_ = false;
};

}  // namespace orvenmod::store::odbc
