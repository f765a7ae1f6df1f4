// Which list a saved entry shows up in. It goes by gItemCalled and not by the window that opened the dialog: a window
// that isn't on the screen is loaded unseen for it.
#pragma once

namespace orvenmod {

/// Reads that list again and keeps its row. A failure while the window is loaded goes to the caller.
void refreshEntryList();

}  // namespace orvenmod
