// The rows of one query, fetched whole to the client. Filled by a store cell by cell, read by
// the logic row by row (cursor) and by the grids at random (cell). A plain value: movable, not copyable,
// bound to no connection, so it outlives a closeDB. One thread.
//
// Memory: a cell is one pointer to a length-prefixed text in a shared arena, or null:
//
//   cells_   [row block 0][row block 1] ...      8 bytes a cell, row-major in blocks of kRowsPerBlock rows
//   arena_   [len][bytes][len][bytes] ...        len: 1 byte below 255, else 0xFF and 8 bytes
//
// All values are texts: numbers in plain decimal, dates YYYY-MM-DD HH:MM:SS (.fff only when not zero),
// binary contents as they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::store {

enum class ColumnType { integer, decimal, real, text, date, binary };

/// The numbers of a recordset's own failures, which no server sends.
inline constexpr int kNoSuchField = 3265;
inline constexpr int kNoCurrentRow = 3021;

struct Column {
    std::string name;
    ColumnType type = ColumnType::text;
};

/// A field's value: nothing for null.
using Value = std::optional<std::string_view>;

/// The position of the named column, without regard to case; the first of two of one name. Throws Failure 3265 where
/// there is none.
int columnOf(const std::vector<Column>& columns, std::string_view name);

class Recordset {
public:
    Recordset();
    explicit Recordset(std::vector<Column> columns);
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    const std::vector<Column>& columns() const { return columns_; }
    int columnCount() const { return static_cast<int>(columns_.size()); }
    std::size_t rowCount() const { return rows_; }

    /// See columnOf.
    int column(std::string_view name) const { return columnOf(columns_, name); }

    /// The cell of row and column, both from 0. The view lives as long as the recordset.
    Value cell(std::size_t row, int column) const;

    /// The cursor starts on the first row.
    bool eof() const { return at_ >= rows_; }
    void moveNext() { ++at_; }
    void moveFirst() { at_ = 0; }

    /// The current row's field. Throws Failure 3265 for an unknown name, 3021 at the end.
    Value field(std::string_view name) const;
    bool isNull(std::string_view name) const { return !field(name).has_value(); }
    /// The current row's field as text, `fallback` for null.
    std::string text(std::string_view name, std::string_view fallback = "") const;

    /// Bytes held for cells and texts, capacity included.
    std::size_t memory() const;

    // For the store that fills it: one call a cell, in row order, then endRow().
    void addText(std::string_view text);
    void addNull();
    void endRow() { ++rows_; }

private:
    static constexpr std::size_t kRowsPerBlock = 1024;
    static constexpr std::size_t kArenaBlock = 1 << 20;

    void addCell(const char* cell);
    void growCells();
    char* reserve(std::size_t bytes);

    std::vector<Column> columns_;
    std::vector<std::unique_ptr<const char*[]>> cells_;
    std::size_t filled_ = 0;    // of the last block
    std::size_t capacity_ = 0;  // of the last block, in cells
    std::size_t rows_ = 0;
    std::size_t at_ = 0;
    std::vector<std::unique_ptr<char[]>> arena_;
    char* free_ = nullptr;
    std::size_t left_ = 0;
    std::size_t arenaBytes_ = 0;
};

}  // namespace orvenmod::store
