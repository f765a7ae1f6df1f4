// The table of a workbook's texts, each stored once: SST with its CONTINUE records.
//
//   SST      [uses 4][texts 4] [units 2][flags 1][UTF-16 ...] ...
//   CONTINUE where a text breaks between its units, its rest begins with a flag byte anew; a text's head never breaks
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orvenmod::platform {

class SharedStrings {
public:
    /// The text's place in the table.
    std::uint32_t place(std::string_view text);
    void write(std::string& stream) const;

private:
    std::deque<std::string> texts_;
    std::unordered_map<std::string_view, std::uint32_t> places_;
    std::uint32_t uses_ = 0;
};

}  // namespace orvenmod::platform
