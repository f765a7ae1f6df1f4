// Nodes of a tree by key and by place. A key is one letter and a number.
#pragma once

#include <cstdint>
#include <string>

#include "platform/tree.h"

namespace orvenmod {

/// The number in a key. Throws ConversionFailure where there is none.
std::int32_t keyNumber(const std::string& key);

/// The place of the selected node, 0 for none.
int selectedIndex(const platform::Tree& tree);

/// Selects the node at that place; without one the selection stays as it is.
void selectIndex(platform::Tree& tree, int index);

}  // namespace orvenmod
