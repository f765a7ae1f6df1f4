// A set of small numbers, one bit each, that takes no memory until something is put in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvenmod::platform::model {

class BitSet {
public:
    bool test(std::size_t bit) const {
        const std::size_t word = bit / 64;
        return word < words_.size() && ((words_[word] >> (bit % 64)) & 1U) != 0;
    }
    void set(std::size_t bit) {
        const std::size_t word = bit / 64;
        if (word >= words_.size()) words_.resize(word + 1 + words_.size() / 2);
        words_[word] |= std::uint64_t{1} << (bit % 64);
    }
    void reset(std::size_t bit) {
        const std::size_t word = bit / 64;
        if (word < words_.size()) words_[word] &= ~(std::uint64_t{1} << (bit % 64));
    }
    void clear() { words_.clear(); }
    bool empty() const { return words_.empty(); }

private:
    std::vector<std::uint64_t> words_;
};

}  // namespace orvenmod::platform::model
