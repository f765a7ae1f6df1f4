// The database routines behind the commands of the item list. Each opens the store, works and closes it, and shows its
// refusals and failures itself.
#pragma once

#include <cstdint>
#include <string>

namespace orvenmod {

/// Deletes the detail gCurItemId with its row of gItemTable and its attachments, where nothing uses it. A second
/// failure (of the rollback) goes to the caller and leaves the store open.
bool delDetail();

/// Why an item stays; the text is "" where nothing speaks against its delete.
struct DeleteRefusal {
    enum class Cause { locked, used };
    std::string text;
    Cause cause = Cause::locked;
};

/// The same for any item of the class, on gConn, which is open: why it stays, or that it is deleted. What fails goes
/// to the caller, who rolls back where a transaction is open then.
DeleteRefusal deleteUnused(std::int32_t itemId);

/// Deletes a category of the class that has nothing below it, likewise; "" where it is deleted.
std::string deleteEmptyCategory(std::int32_t id);

/// Disables and enables the detail gCurItemId. False where it is so already.
bool lockDetail();
bool unLockDetail();

/// Deletes a category that has nothing below it.
bool delParent(const std::int32_t& id);

}  // namespace orvenmod
