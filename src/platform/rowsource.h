// What a bound list grid shows: rows and columns of texts, read where they are needed and never copied.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvenmod::platform {

class RowSource {
public:
    virtual ~RowSource() = default;
    virtual std::size_t rowCount() const = 0;
    virtual int columnCount() const = 0;
    /// Row and column from 0; nothing for null. The view lives as long as the source.
    virtual std::optional<std::string_view> cell(std::size_t row, int column) const = 0;
};

}  // namespace orvenmod::platform
