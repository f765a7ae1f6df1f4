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
    /// Throws Failure 208 for a table that does not exist.
    OdbcTableWriter(OdbcConnection& connection, std::string_view table);

    void addNew() override;
    void set(std::string_view field, std::string_view text) override;
    void setNull(std::string_view field) override;
    void setBinary(std::string_view field, std::span<const std::byte> bytes) override;
    void update() override;

private:
    struct Column {
        std::string name;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
    };
    struct Field {
        std::size_t column = 0;
        std::optional<std::string> text;
        std::optional<std::span<const std::byte>> bytes;
        SQLLEN indicator = 0;
    };

    void checkTable();
    void readColumns();
    Field& field(std::string_view name);
    std::string insertText() const;
    void bind(const OdbcHandle& statement);
    void bindField(const OdbcHandle& statement, SQLUSMALLINT index, Field& field);
    void stream(const OdbcHandle& statement);

    OdbcConnection& connection_;
    std::string table_;
    std::vector<Column> columns_;
    std::vector<Field> fields_;
    bool begun_ = false;
};

}  // namespace orvenmod::store::odbc
