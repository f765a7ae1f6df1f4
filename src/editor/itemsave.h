// What a save of an item asks of the store and sends to it, in the order of the save and free of any window: the
// editor's own save stands on it, and so does whoever stores many items at once. Works on gConn, which is open, for
// class gItemClassId; what fails goes to the caller.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "editor/fieldrow.h"
#include "editor/itemstatements.h"

namespace orvenmod {

/// An item as it is to be stored.
struct ItemDraft {
    std::vector<FieldRow> classFields;  ///< every field but the short code
    ItemTexts texts;
    std::string categoryId;  ///< "" and "-1" for none, as "0"
};

/// Why a save is refused.
inline constexpr const char* kTakenCode = "代码已经存在,保存不成功!";
inline constexpr const char* kLockedItem = "该项目已经禁用!不能修改";

/// What the searches for others leave out.
std::string butItself(std::int32_t itemId);

/// Whether the item is locked; nothing where there is none of that id.
std::optional<bool> itemLock(std::int32_t itemId);
inline bool isItemLocked(std::int32_t itemId) { return itemLock(itemId).value_or(false); }
/// Whether another row of the class has the code: categories count as well.
bool codeIsTaken(const ItemDraft& item, const std::string& others);
bool nameIsTaken(const ItemDraft& item, const std::string& others);

/// The next id; used up where what follows fails.
std::int32_t takeItemId();

/// The rows of a new item and of a changed one, for the transaction. A category that is gone leaves the item without a
/// place: depth and parent 0, an empty path. A changed item's photo is deleted, to be stored anew.
std::vector<std::string> newItemRows(const ItemDraft& item, std::int32_t itemId);
std::vector<std::string> changedItemRows(const ItemDraft& item, std::int32_t itemId);

}  // namespace orvenmod
