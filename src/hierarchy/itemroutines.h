// The database routines behind the commands of the item list. Each opens the store, works and closes it, and shows its
// refusals and failures itself.
#pragma once

#include <cstdint>

namespace orvenmod {

/// Deletes the detail gCurItemId with its row of gItemTable and its attachments, where nothing uses it. A second
/// failure (of the rollback) goes to the caller and leaves the store open.
bool delDetail();

/// Disables and enables the detail gCurItemId. False where it is so already.
bool lockDetail();
bool unLockDetail();

/// Deletes a category that has nothing below it.
bool delParent(const std::int32_t& id);

}  // namespace orvenmod
