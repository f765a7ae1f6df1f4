#include "platform/model/rowindex.h"

#include <bit>

namespace orvenmod::platform::model {

void RowIndex::reset(std::size_t count) {
    slots_ = count;
    removed_ = 0;
    gone_.clear();
    fenwick_.clear();
}

std::size_t RowIndex::append() {
    ++slots_;
    if (removed_ > 0) growWords();
    return slots_ - 1;
}

void RowIndex::truncate(std::size_t size) {
    if (size >= this->size()) return;
    const std::size_t slots = size == 0 ? 0 : slotAt(size - 1) + 1;
    std::vector<std::size_t> stillGone;
    for (std::size_t slot = 0; removed_ > 0 && slot < slots; ++slot) {
        if (!has(slot)) stillGone.push_back(slot);
    }
    reset(slots);
    for (const std::size_t slot : stillGone)
        mark(slot);
}

void RowIndex::remove(std::size_t position) { mark(slotAt(position)); }

bool RowIndex::has(std::size_t slot) const {
    if (slot >= slots_) return false;
    return removed_ == 0 || ((gone_[slot / 64] >> (slot % 64)) & 1U) == 0;
}

std::size_t RowIndex::slotAt(std::size_t position) const {
    if (removed_ == 0) return position;
    // Walk down the Fenwick tree to the word in which the position lies.
    std::size_t word = 0;
    std::size_t left = position;
    for (std::size_t step = std::bit_floor(gone_.size()); step > 0; step /= 2) {
        if (word + step >= fenwick_.size()) continue;
        const std::size_t there = step * 64 - fenwick_[word + step];
        if (there <= left) {
            word += step;
            left -= there;
        }
    }
    std::uint64_t there = ~gone_[word];
    for (; left > 0; --left)
        there &= there - 1;
    return word * 64 + static_cast<std::size_t>(std::countr_zero(there));
}

std::size_t RowIndex::positionOf(std::size_t slot) const {
    if (removed_ == 0) return slot;
    const std::uint64_t below = gone_[slot / 64] & ((std::uint64_t{1} << (slot % 64)) - 1);
    return slot - removedBefore(slot / 64) - static_cast<std::size_t>(std::popcount(below));
}

void RowIndex::mark(std::size_t slot) {
    ++removed_;
    growWords();
    gone_[slot / 64] |= std::uint64_t{1} << (slot % 64);
    for (std::size_t node = slot / 64 + 1; node < fenwick_.size(); node += node & (~node + 1))
        ++fenwick_[node];
}

void RowIndex::growWords() {
    if (fenwick_.empty()) fenwick_.push_back(0);
    while (gone_.size() * 64 < slots_) {
        gone_.push_back(0);
        const std::size_t node = gone_.size();
        const std::size_t span = node & (~node + 1);
        fenwick_.push_back(removedBefore(node - 1) - removedBefore(node - span));
    }
}

std::size_t RowIndex::removedBefore(std::size_t word) const {
    std::size_t sum = 0;
    for (std::size_t node = word; node > 0; node -= node & (~node + 1))
        sum += fenwick_[node];
    return sum;
}

}  // namespace orvenmod::platform::model
