// What a bound list grid shows: rows and columns of texts, read where they are needed and never copied. Rows may have
// to be fetched first, which can fail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace orvenmod::platform {

/// What a cell's own text is asked.
using CellTest = bool (*)(std::string_view);

class RowSource {
public:
    virtual ~RowSource() = default;
    virtual std::size_t rowCount() const = 0;
    virtual int columnCount() const = 0;
    /// Row and column from 0; nothing for null. The view lives until a cell of another row is asked for. Throws where
    /// the row can't be fetched; asked again, it is fetched again.
    virtual std::optional<std::string_view> cell(std::size_t row, int column) const = 0;
    /// Whether the row's cells are at hand, so that cell() fetches nothing.
    virtual bool holds(std::size_t) const { return true; }
    /// Calls `take` once for each row, in whatever order costs least; it asks for no cells but the row's own in these
    /// columns, each of which is named once. Throws where rows can't be fetched.
    virtual void forEachRow(std::span<const int> /*columns*/, const std::function<void(std::size_t)>& take) const {
        for (std::size_t row = 0; row < rowCount(); ++row)
            take(row);
    }
    /// Tells rows that are looked at next, in that order: fetched together they take less. Throws as cell().
    virtual void expect(std::span<const std::uint32_t> /*rows*/) const {}
};

}  // namespace orvenmod::platform
