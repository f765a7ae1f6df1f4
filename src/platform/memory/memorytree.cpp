#include "platform/memory/memorytree.h"

namespace orvenmod::platform::memory {

void MemoryTree::add(const std::string& parentKey, const std::string& key, const std::string& text,
                     const std::string& image) {
    model_.add(parentKey, key, text, image);
}

std::string MemoryTree::parent(const std::string& key) const {
    const std::size_t up = model_.node(key).parent;
    return up == model::TreeModel::kRoot ? std::string() : model_.node(up).key;
}

}  // namespace orvenmod::platform::memory
