#include "frame/treenodes.h"

#include "frame/conversion.h"

namespace orvenmod {

std::string nodeKey(const std::string& id) { return "D" + id; }

void fillClassTree(platform::Tree& tree, const std::string& rootText, store::Recordset& classes) {
    tree.clear();
    tree.add("", kRootKey, rootText, kNodeIcon);
    for (; !classes.eof(); classes.moveNext()) {
        const std::string id = classes.text("fitemclassid");
        tree.add(kRootKey, nodeKey(id), classes.text("fitemname") + "(" + id + ")", kNodeIcon);
        tree.ensureVisible(nodeKey(id));
    }
}

std::string keyText(const std::string& key) { return key.empty() ? "" : key.substr(1); }

std::int32_t keyNumber(const std::string& key) {
    const std::string id = keyText(key);
    return id.empty() ? 0 : toInt32(id);
}

int selectedIndex(const platform::Tree& tree) {
    const std::string key = tree.selected();
    return key.empty() ? 0 : tree.indexOf(key);
}

void selectIndex(platform::Tree& tree, int index) {
    if (index >= 1 && index <= tree.count()) tree.select(tree.keyAt(index));
}

}  // namespace orvenmod
