// The order of things that are added at the end and removed anywhere. Each keeps a number of its own for life (its
// slot); its position among those still there follows from what was removed before it.
//
// Until something is removed, position and slot are the same and nothing is stored. From then on one bit a slot marks
// the removed ones, and a Fenwick tree counts them by words of 64: remove, slotAt and positionOf take logarithmic time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvenmod::platform::model {

class RowIndex {
public:
    /// Starts again with `count` slots, all there.
    void reset(std::size_t count);
    /// Adds one at the end and gives its slot.
    std::size_t append();
    /// Keeps the first `size` positions.
    void truncate(std::size_t size);
    void remove(std::size_t position);

    std::size_t size() const { return slots_ - removed_; }
    /// All slots ever given out since the last reset or cut.
    std::size_t slotCount() const { return slots_; }
    bool has(std::size_t slot) const;
    std::size_t slotAt(std::size_t position) const;
    std::size_t positionOf(std::size_t slot) const;

private:
    void mark(std::size_t slot);
    void growWords();
    std::size_t removedBefore(std::size_t word) const;

    std::size_t slots_ = 0;
    std::size_t removed_ = 0;
    std::vector<std::uint64_t> gone_;   // a bit a slot; empty until the first removal
    std::vector<std::size_t> fenwick_;  // removed slots by word of gone_, from 1
};

}  // namespace orvenmod::platform::model
