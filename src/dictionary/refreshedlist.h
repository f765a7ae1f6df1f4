// Which list a saved entry shows up in. It goes by gItemCalled and not by the window that opened the dialog: a window
// that isn't on the screen is loaded unseen for it.
#pragma once

#include <cstdint>

#include "dictionary/entrylist.h"

namespace orvenmod {

/// A window that lists the entries of one dictionary.
class EntryWindow {
public:
    virtual ~EntryWindow() = default;

    virtual platform::ListGrid& vsf1() = 0;
    /// Reads the list again. Shows its failures itself.
    virtual bool refreshEntries(std::int16_t itemClassId) = 0;
};

/// Reads that list again and keeps its row. A failure while the window is loaded goes to the caller.
void refreshEntryList();

}  // namespace orvenmod
