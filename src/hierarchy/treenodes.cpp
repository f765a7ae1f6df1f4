#include "hierarchy/treenodes.h"

#include "frame/conversion.h"

namespace orvenmod {

std::int32_t keyNumber(const std::string& key) { return toInt32(key.substr(1)); }

int selectedIndex(const platform::Tree& tree) {
    const std::string key = tree.selected();
    return key.empty() ? 0 : tree.indexOf(key);
}

void selectIndex(platform::Tree& tree, int index) {
    if (index >= 1 && index <= tree.count()) tree.select(tree.keyAt(index));
}

}  // namespace orvenmod
