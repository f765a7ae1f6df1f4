// The texts of a cell's items: given, or a column of rows that somebody holds. Of rows nothing is copied until a list
// of them is opened, so that an editor with ten lookups of ten thousand entries opens without a hundred thousand texts.
// A plain value; copies share what they hold.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rowsource.h"

namespace orvenmod::platform {

class ItemTexts {
public:
    ItemTexts() : ItemTexts(std::vector<std::string>()) {}
    ItemTexts(std::vector<std::string> texts);
    ItemTexts(std::initializer_list<std::string> texts) : ItemTexts(std::vector<std::string>(texts)) {}
    /// The column counts from 0; null is "".
    ItemTexts(std::shared_ptr<const RowSource> rows, int column);

    std::size_t size() const;
    /// The view lives until an item of another row is asked for.
    std::string_view at(std::size_t item) const;
    /// The first item of exactly that text, -1 for none.
    int find(std::string_view text) const;
    /// Copied out of the rows when it is first asked for.
    const std::vector<std::string>& all() const;

private:
    struct Held {
        std::shared_ptr<const RowSource> rows;
        int column = 0;
        std::vector<std::string> texts;
        bool copied = false;
    };

    std::shared_ptr<Held> held_;
};

}  // namespace orvenmod::platform
