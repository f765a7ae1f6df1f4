// What the class holds when a file is checked against it: its items by their codes, with their values, and its
// categories by code and by path. Read once, by two statements.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/recordset.h"

namespace orvenmod {

/// A row of the class's tree.
struct StoredItem {
    std::int32_t id = 0;
    bool detail = false;
    bool locked = false;
    std::string parentId;
    std::string shortCode;
};

/// The rows of the class's tree, parents before children. Reads on gConn, which is open; what fails goes to the caller.
store::Recordset readTree();

class StoredItems {
public:
    /// The tree's rows, and what the class's view shows of each item, which is read likewise.
    void read(const store::Recordset& tree);

    /// The item or category of that code; null for none.
    const StoredItem* byCode(const std::string& code) const;
    /// Whether an item other than `id` has the name.
    bool hasName(const std::string& name, std::int32_t id) const;
    /// The value that the class's view shows of the item.
    std::string value(std::int32_t id, const std::string& column) const;

private:
    store::Recordset values_;
    std::unordered_map<std::int32_t, std::size_t> rows_;
    std::unordered_map<std::string, StoredItem> byCode_;
    std::unordered_map<std::string, std::int32_t> byName_;  ///< 0 where several have it
};

/// A category, stored or to be made. Ids below 0 are given to those that are to be made.
struct ImportCategory {
    std::int32_t id = 0;
    std::int32_t parentId = 0;
    std::string code;
    std::string shortCode;
    std::string name;
};

class ImportCategories {
public:
    void read(const store::Recordset& tree);

    /// The category of that code, or of that path of names ("五金/螺丝"); null for none.
    const ImportCategory* find(const std::string& text) const;
    /// Of that id; the top of the tree for 0.
    const ImportCategory& at(std::int32_t id) const { return categories_.at(id); }
    /// The innermost one whose code the code begins with; the top of the tree where none is.
    const ImportCategory& around(const std::string& code) const;
    /// Plans what is missing of the path or the code, and gives the innermost; why it can't be made otherwise.
    const ImportCategory* plan(const std::string& text, std::string& refusal);

private:
    const ImportCategory& add(ImportCategory category);
    void noteShortCode(std::int32_t parentId, const std::string& code);
    /// Behind the highest of the longest, as the editor proposes it.
    std::string nextShortCode(std::int32_t parentId) const;

    std::unordered_map<std::int32_t, ImportCategory> categories_;
    std::unordered_map<std::string, std::int32_t> byCode_;
    std::unordered_map<std::string, std::int32_t> byPath_;
    std::unordered_map<std::string, std::int32_t> byName_;  ///< 0 where several have it
    std::unordered_map<std::int32_t, std::string> paths_;
    std::unordered_map<std::int32_t, std::string> highestCodes_;  ///< of the children, items as well
    std::int32_t lastPlanned_ = 0;
};

}  // namespace orvenmod
