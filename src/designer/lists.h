// Lists kept in one text, their entries separated by commas.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod {

/// The entries of a list; an empty text holds none.
std::vector<std::string> splitList(std::string_view text);

/// The entry at that place, from 0. A list that ends before it is ConversionFailure 9 ("下标越界").
const std::string& entryOf(const std::vector<std::string>& list, std::size_t place);

}  // namespace orvenmod
