#include "platform/model/treemodel.h"

#include <stdexcept>

namespace orvenmod::platform::model {

void TreeModel::clear() {
    nodes_.clear();
    roots_.clear();
    order_.reset(0);
    slots_.clear();
    selected_ = kRoot;
}

std::size_t TreeModel::add(const std::string& parentKey, const std::string& key, const std::string& text,
                           const std::string& image) {
    const std::size_t parent = parentKey.empty() ? kRoot : slot(parentKey);
    if (key.empty()) throw std::runtime_error("无效的关键字");
    if (has(key)) throw std::runtime_error("集合中的关键字不唯一：" + key);
    const std::size_t added = order_.append();
    Node node;
    node.key = key;
    node.text = text;
    node.image = image;
    node.parent = parent;
    node.place = children(parent).size();
    nodes_.push_back(std::move(node));
    (parent == kRoot ? roots_ : nodes_[parent].children).push_back(added);
    slots_.emplace(key, added);
    return added;
}

void TreeModel::remove(const std::string& key) {
    const std::size_t top = slot(key);
    std::vector<std::size_t>& siblings = nodes_[top].parent == kRoot ? roots_ : nodes_[nodes_[top].parent].children;
    siblings.erase(siblings.begin() + static_cast<std::ptrdiff_t>(nodes_[top].place));
    for (std::size_t place = nodes_[top].place; place < siblings.size(); ++place)
        nodes_[siblings[place]].place = place;

    std::vector<std::size_t> doomed{top};
    for (std::size_t next = 0; next < doomed.size(); ++next) {
        const std::size_t slot = doomed[next];
        doomed.insert(doomed.end(), nodes_[slot].children.begin(), nodes_[slot].children.end());
        if (selected_ == slot) selected_ = kRoot;
        slots_.erase(nodes_[slot].key);
        order_.remove(order_.positionOf(slot));
        nodes_[slot] = {};
    }
}

void TreeModel::ensureVisible(const std::string& key) {
    for (std::size_t up = node(key).parent; up != kRoot; up = nodes_[up].parent)
        nodes_[up].expanded = true;
}

int TreeModel::indexOf(const std::string& key) const { return static_cast<int>(order_.positionOf(slot(key))) + 1; }

const std::string& TreeModel::keyAt(int index) const {
    if (index < 1 || index > count()) throw std::out_of_range("no such node: " + std::to_string(index));
    return nodes_[order_.slotAt(static_cast<std::size_t>(index) - 1)].key;
}

std::size_t TreeModel::slot(const std::string& key) const {
    const auto it = slots_.find(key);
    if (it == slots_.end()) throw std::runtime_error("找不到元素：" + key);
    return it->second;
}

const std::vector<std::size_t>& TreeModel::children(std::size_t parent) const {
    return parent == kRoot ? roots_ : nodes_[parent].children;
}

bool TreeModel::reachable(const std::string& key) const {
    for (std::size_t up = node(key).parent; up != kRoot; up = nodes_[up].parent) {
        if (!nodes_[up].expanded) return false;
    }
    return true;
}

}  // namespace orvenmod::platform::model
