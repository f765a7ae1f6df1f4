// The fields of a row that is being added, by the table's columns; what the table writers of translated stores share.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"
#include "store/tsql/catalog.h"
#include "store/tsql/messages.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql {

/// The table of that name, with "dbo." before it or not. Throws Error 208 where there is none.
const ObjectInfo& tableNamed(const Catalog& catalog, std::string_view name);

/// The table's column of that name. Throws Error 207 where there is none.
const ColumnInfo& columnNamed(const ObjectInfo& table, std::string_view name);

/// A text as the column stores it. Throws Error where the column doesn't take it.
Datum storedValue(std::string_view text, const ObjectInfo& table, const ColumnInfo& column);

class RowWriter : public TableWriter {
public:
    void addNew() override;
    void set(std::string_view field, std::string_view text) override;
    void setNull(std::string_view field) override;
    void setBinary(std::string_view field, std::span<const std::byte> bytes) override;
    void update() override;

protected:
    struct Field {
        std::size_t column = 0;
        std::optional<std::string> text;
        std::optional<std::span<const std::byte>> bytes;
    };

    /// Throws Error 208 for a table that does not exist.
    RowWriter(const Catalog& catalog, std::string_view table);

    /// Throws Failure where the connection takes no row any more.
    virtual void checkOpen() = 0;
    virtual Language language() const = 0;
    /// Stores the row. Throws Failure, Error.
    virtual void store() = 0;

    const ObjectInfo& table() const { return table_; }
    const std::vector<Field>& fields() const { return fields_; }
    const ColumnInfo& columnOf(const Field& field) const { return table_.columns[field.column]; }
    /// The field's text as its column stores it. Throws Error where the column doesn't take it.
    Datum valueOf(const Field& field) const;
    /// The new value of a column for a message.
    std::string newValue(std::string_view column) const;

private:
    Field& field(std::string_view name);

    ObjectInfo table_;
    std::vector<Field> fields_;
    bool begun_ = false;
};

}  // namespace orvenmod::store::tsql
