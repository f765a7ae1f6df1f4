// The statements of an item's save, assembled from the field grid. Texts enter them as they stand, without escaping.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "editor/fieldrow.h"

namespace orvenmod {

/// Where an item hangs in the tree.
struct Place {
    std::string parentId = "0";
    std::string depth = "0";
    std::string path;
};

/// An item's own values as its row of tblItem takes them.
struct ItemTexts {
    std::string number;
    std::string name;
    std::string shortNumber;
};

/// The class table's row of a new item.
std::string classInsert(const std::string& table, const std::vector<FieldRow>& fields, std::int32_t itemId);
std::string classUpdate(const std::string& table, const std::vector<FieldRow>& fields, std::int32_t itemId);

/// The item's row of tblItem.
std::string itemInsert(std::int32_t itemId, const ItemTexts& texts, std::int16_t classId, const Place& place);
std::string itemUpdate(std::int32_t itemId, const ItemTexts& texts, const Place& place);

}  // namespace orvenmod
