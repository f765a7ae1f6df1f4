// A window that lists the entries of one dictionary. There is one object of each for the process: it is loaded by
// show(), or unseen by the first call of loaded(), and stays loaded until the window in front of the host has closed.
#pragma once

#include <cstdint>

#include "platform/listgrid.h"
#include "platform/window.h"

namespace orvenmod {

class EntryWindow {
public:
    virtual ~EntryWindow() = default;

    /// Shows the window modally. A failure while it loads goes to the caller, and the window is gone.
    void show();
    /// The window, loaded unseen where it isn't yet. A failure while it loads goes to the caller.
    EntryWindow& loaded();
    virtual void unload() = 0;

    virtual platform::ListGrid& vsf1() = 0;
    /// Reads the list again. Shows its failures itself.
    virtual bool refreshEntries(std::int16_t itemClassId) = 0;

protected:
    virtual bool isLoaded() const = 0;
    /// Makes the window with its events connected.
    virtual platform::Window& make() = 0;
    virtual void Form_Load() = 0;
    /// The one that may have been loaded unseen for this one.
    virtual EntryWindow& other() = 0;
};

/// Whether the user has the dictionary's right of these two digits; tells the refusal itself.
bool isEntryRightGranted(const char* digits);

}  // namespace orvenmod
