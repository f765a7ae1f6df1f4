// Keys that come by texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "store/sqlite/keyquery.h"

namespace orvenmod::store::sqlite {

/// Whether NOCASE and the list's order put the text at the same place among others of the kind.
bool isOrderedAlike(std::string_view text);

/// Keys in the order of their texts. Those of one text may come in any order, and are put into that of the keys.
class OrderedKeys {
public:
    enum class Order { ascending, descending };
    explicit OrderedKeys(Order order = Order::ascending) : order_(order) {}

    void add(std::string_view text, std::int64_t key);
    /// All of them; none is left.
    Keys taken();

private:
    bool isLast(std::string_view text, bool alike) const;
    void sortLast();

    Order order_;
    Keys keys_;
    std::size_t begin_ = 0;  // of the keys of the last text
    std::string last_;
    bool lastIsAlike_ = false;
};

}  // namespace orvenmod::store::sqlite
