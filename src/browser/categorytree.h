// The tree of an item class's categories: a root for the class and a node for each category.
//
//   key   "D" + fitemid, the root "D0"
#pragma once

#include <cstdint>
#include <string>

#include "platform/tree.h"
#include "store/recordset.h"

namespace orvenmod {

std::string categoryStatement(std::int16_t itemClassId);

/// Fills the tree from the rows of that statement, which are sorted by depth. Throws std::runtime_error where a
/// category's parent has no node; the tree then holds the nodes before it.
void fillTree(platform::Tree& tree, const std::string& rootText, store::Recordset& rows);

}  // namespace orvenmod
