// What a tree holds, for every toolkit. Nodes are known by their key, and inside by a slot that stays theirs for life;
// kRoot stands for the place above the roots. Calls with a key that isn't throw std::runtime_error.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/model/rowindex.h"

namespace orvenmod::platform::model {

class TreeModel {
public:
    static constexpr std::size_t kRoot = static_cast<std::size_t>(-1);

    struct Node {
        std::string key;
        std::string text;
        std::string image;
        std::size_t parent = kRoot;
        std::size_t place = 0;  ///< among its parent's children
        bool expanded = false;
        std::vector<std::size_t> children;
    };

    void clear();
    /// The new node's slot.
    std::size_t add(const std::string& parentKey, const std::string& key, const std::string& text,
                    const std::string& image);
    void remove(const std::string& key);
    void ensureVisible(const std::string& key);

    int count() const { return static_cast<int>(order_.size()); }
    bool has(const std::string& key) const { return slots_.count(key) > 0; }
    /// Counts from 1, in the order of adding.
    int indexOf(const std::string& key) const;
    const std::string& keyAt(int index) const;

    std::size_t slot(const std::string& key) const;
    const Node& node(std::size_t slot) const { return nodes_[slot]; }
    const Node& node(const std::string& key) const { return nodes_[slot(key)]; }
    const std::vector<std::size_t>& children(std::size_t parent) const;
    void setExpanded(const std::string& key, bool expanded) { nodes_[slot(key)].expanded = expanded; }
    /// Whether all its ancestors are open.
    bool reachable(const std::string& key) const;

    /// "" for none.
    std::string selected() const { return selected_ == kRoot ? std::string() : nodes_[selected_].key; }
    void select(const std::string& key) { selected_ = key.empty() ? kRoot : slot(key); }

private:
    std::vector<Node> nodes_;  // by slot; removed ones stay as empty places
    std::vector<std::size_t> roots_;
    RowIndex order_;
    std::unordered_map<std::string, std::size_t> slots_;
    std::size_t selected_ = kRoot;
};

}  // namespace orvenmod::platform::model
