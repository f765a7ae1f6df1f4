// A class's categories and items as a plain tree in memory, to compare with what the database holds.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "support/rows.h"

namespace orvenmod::test {

struct Node {
    int parent = 0;
    bool detail = false;
    std::string shortCode;
    std::string code;
    std::string name;
    bool locked = false;
};

class PlainTree {
public:
    std::map<int, Node> nodes;
    int lastId = 0;

    std::string path(int id) const { return id == 0 ? "." : path(nodes.at(id).parent) + std::to_string(id) + "."; }
    int depth(int id) const { return id == 0 ? 0 : depth(nodes.at(id).parent) + 1; }
    bool isBelow(int id, int top) const { return id != 0 && (id == top || isBelow(nodes.at(id).parent, top)); }
    bool hasChildren(int id) const {
        for (const auto& [other, node] : nodes)
            if (node.parent == id) return true;
        return false;
    }
    bool isTaken(const std::string& code, int but = 0) const {
        for (const auto& [id, node] : nodes)
            if (id != but && node.code == code) return true;
        return false;
    }
    std::string composed(int parent, const std::string& shortCode) const {
        return parent == 0 ? shortCode : nodes.at(parent).code + "." + shortCode;
    }
    /// What the codes below a category become; none where one of them doesn't hold the category's code.
    std::optional<std::map<int, std::string>> recoded(int top, const std::string& code) const {
        const std::string old = nodes.at(top).code;
        std::map<int, std::string> codes;
        for (const auto& [id, node] : nodes) {
            if (!isBelow(id, top)) continue;
            const auto at = node.code.find(old);
            if (at == std::string::npos) return std::nullopt;
            codes[id] = code + node.code.substr(at + old.size());
        }
        return codes;
    }

    Rows items() const {
        Rows rows;
        for (const auto& [id, node] : nodes) {
            rows.push_back({std::to_string(id), node.code, path(id), std::to_string(depth(id)),
                            std::to_string(node.parent), node.shortCode, node.name});
        }
        return rows;
    }
    Rows details() const {
        Rows rows;
        for (const auto& [id, node] : nodes)
            if (node.detail) rows.push_back({std::to_string(id), node.code});
        return rows;
    }
};

}  // namespace orvenmod::test
