// The delete of a dictionary entry, behind the same gate as that of a detail item.
#pragma once

namespace orvenmod {

/// Deletes the entry gCurItemId where no bill uses it. Shows refusals and failures itself.
bool delJCZL();

}  // namespace orvenmod
