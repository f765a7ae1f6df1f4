// Nodes of a tree by key and by place. A key is one letter and, behind it, the id of what the node stands for; the
// root's id is 0.
#pragma once

#include <cstdint>
#include <string>

#include "platform/tree.h"
#include "store/recordset.h"

namespace orvenmod {

inline constexpr const char* kRootKey = "D0";
/// The icon of every node.
inline constexpr const char* kNodeIcon = "Folder";

std::string nodeKey(const std::string& id);

/// Shows the classes of the rows (fitemclassid, fitemname) below a root, each in view.
void fillClassTree(platform::Tree& tree, const std::string& rootText, store::Recordset& classes);

/// The key without its letter; "" for no key.
std::string keyText(const std::string& key);

/// The number in a key, 0 where nothing is behind the letter. Throws ConversionFailure for what is no number.
std::int32_t keyNumber(const std::string& key);

/// The place of the selected node, 0 for none.
int selectedIndex(const platform::Tree& tree);

/// Selects the node at that place; without one the selection stays as it is.
void selectIndex(platform::Tree& tree, int index);

}  // namespace orvenmod
