// Who sits in front of the memory toolkit: called where a real toolkit would wait for the user. Implemented by the
// tests' scripted user and by tours. One thread.
#pragma once

#include <string>

#include "platform/toolkit.h"

namespace orvenmod::platform::memory {

class MemoryMenu;
class MemoryWindow;

class MemoryDriver {
public:
    virtual ~MemoryDriver() = default;

    /// A modal window has loaded and waits for input. It is closed when this returns. May not throw.
    virtual void onModal(MemoryWindow& window) = 0;
    /// Question boxes are answered yes or no, all others ok.
    virtual Answer onMessage(MessageKind kind, const std::string& text, const std::string& title) = 0;
    /// The full path, "" where the user cancels.
    virtual std::string onFileDialog(bool save, const std::string& filter) = 0;
    /// A menu has popped up and goes away when this returns.
    virtual void onPopUp(MemoryMenu& menu) = 0;
    virtual void onDocument(const std::string& path) = 0;
};

}  // namespace orvenmod::platform::memory
