// Finds rows by words, as fast as a user types. The shown texts of a row stand one behind the other as they are
// compared; a word is sought in them by an automaton whose states are the bits of one number: bit i says that the first
// i units of the word end here. A character that equals the unit moves a bit by one; a Chinese one is met by a
// beginning of one of its readings as well, and moves a bit by as many letters:
//
//   内六角   "nlj" n|l|j    "neiliujiao" nei|liu|jiao    "neil" nei|l    "六j"
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::platform::model {

/// The texts of rows, by slot.
class SoughtTexts {
public:
    explicit SoughtTexts(std::size_t count) : rows_(count) {}

    /// Begins a row, each once, in any order.
    void beginRow(std::size_t slot) {
        rows_[slot].begin = units_.size();
        order_.push_back(static_cast<std::uint32_t>(slot));
    }
    /// Adds a cell to the row.
    void addCell(std::string_view text);
    void endRow(std::size_t slot) { rows_[slot].end = units_.size(); }
    /// As the rows came, which is how they lie in memory.
    const std::vector<std::uint32_t>& order() const { return order_; }
    std::u16string_view row(std::size_t slot) const {
        return std::u16string_view(units_).substr(rows_[slot].begin, rows_[slot].end - rows_[slot].begin);
    }

private:
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    std::u16string units_;
    std::vector<Range> rows_;  // by slot, of units_
    std::vector<std::uint32_t> order_;
};

class SoughtWord {
public:
    /// At most kLongest units of a word count.
    explicit SoughtWord(std::u16string_view word);
    bool in(std::u16string_view text) const;

    static constexpr std::size_t kLongest = 63;

private:
    struct Step {
        std::uint64_t from;
        unsigned units;
    };
    void takeReadings(const std::u16string& word);

    std::uint64_t whole_;
    std::array<std::uint64_t, 128> ascii_ = {};
    std::vector<std::pair<char16_t, std::uint64_t>> others_;
    std::vector<std::vector<Step>> steps_;  // by reading number; empty for a word without letters
};

/// The words of a text that was typed.
std::vector<SoughtWord> soughtWords(std::string_view typed);

}  // namespace orvenmod::platform::model
