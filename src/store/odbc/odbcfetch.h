// Copies the rows of an executed query into recordsets, every value as the embedded store would give it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/odbc/odbcwork.h"
#include "store/recordset.h"

namespace orvenmod::store::odbc {

class OdbcFetch {
public:
    enum class Until { end, part };

    /// Of the work's statement, which stands on a result of that many columns. Throws Failure.
    OdbcFetch(const OdbcWork& work, SQLSMALLINT columns);

    /// The rows that come next: all that are left, or as many as a part holds. Throws Failure.
    Recordset next(Until until);
    bool atEnd() const { return atEnd_; }

private:
    // In which form the driver gives a value, and the bytes of one.
    struct Form {
        SQLSMALLINT type;
        std::size_t bytes;  // 0: of any size
    };
    // A column's values of a block.
    struct Cell {
        ColumnType type = ColumnType::text;
        Form form{};
        std::unique_ptr<char[]> values;
        std::unique_ptr<SQLLEN[]> lengths;
    };

    static Form formOf(SQLSMALLINT type, SQLULEN size);
    Column describe(SQLUSMALLINT index);
    bool isFull(std::size_t more) const;
    void bind();
    void unbind();
    void setAttribute(SQLINTEGER attribute, SQLPOINTER value);
    void fetchBlock();
    void fetchRow();
    void addRow(std::size_t row);
    void addValue(const Cell& cell, std::string_view value);
    std::optional<std::string_view> readCell(SQLUSMALLINT column, SQLSMALLINT type);
    void enlarge(std::size_t used, std::size_t more);

    const OdbcWork& work_;
    SQLHANDLE statement_;
    std::vector<Column> columns_;
    std::vector<Cell> cells_;
    Recordset rows_;
    bool atEnd_ = false;
    std::string room_;
    // Of a block; a single row is read cell by cell, through the piece.
    std::size_t blockRows_ = 0;
    SQLULEN count_ = 0;
    std::unique_ptr<SQLUSMALLINT[]> status_;
    std::size_t pieceBytes_ = 0;
    std::unique_ptr<char[]> piece_;
};

/// "12.5000" as "12.5", ".5" as "0.5": a decimal without zeros at its end. `room` holds what isn't a part of the text.
std::string_view plainDecimal(std::string_view text, std::string& room);

}  // namespace orvenmod::store::odbc
