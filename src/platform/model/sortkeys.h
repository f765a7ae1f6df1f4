// A column's cells as strings of bytes that sort as the cells should. A blank cell has the empty key.
//
//   number   sign and exponent, two bytes | two digits a byte, each 1 to 100; a negative one with all bits turned
//   text     the bytes of the collation of the Chinese by their letters, which takes no notice of case and width
//
// Keys are sorted eight bytes at a time, so that comparing touches nothing but the array that is sorted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/listarrangement.h"
#include "platform/model/bitset.h"

namespace orvenmod::platform::model {

/// Slots by the keys of their cells, sorted once for both directions, in little more than four bytes a slot.
class SortedSlots {
public:
    /// Blanks last, equal ones in their own order.
    std::vector<std::uint32_t> inOrder(SortOrder order) const;

private:
    friend class SortKeys;

    std::vector<std::uint32_t> slots_;  // ascending, blanks last
    BitSet tied_;                       // positions of those that are equal to the one before
    std::size_t blanksFrom_ = 0;
};

class SortKeys {
public:
    SortKeys(ColumnKind kind, std::size_t count) : kind_(kind), keys_(count) {}

    /// Each slot's cell once, in any order.
    void set(std::size_t slot, std::string_view cell);
    SortedSlots sorted() const;

private:
    struct Entry {
        std::uint64_t head;
        std::uint32_t slot;
    };
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    void addNumber(std::string_view cell);
    void addText(std::string_view cell);
    std::uint64_t headOf(std::uint32_t slot, std::size_t depth) const;
    std::size_t length(std::uint32_t slot) const { return keys_[slot].end - keys_[slot].begin; }
    /// Tells `tie` each entry that is equal to the one before.
    template <class Tie>
    void sortFrom(std::size_t depth, Entry* first, Entry* last, const Tie& tie) const;

    ColumnKind kind_;
    std::vector<unsigned char> bytes_;
    std::vector<Range> keys_;  // by slot, of bytes_
};

}  // namespace orvenmod::platform::model
