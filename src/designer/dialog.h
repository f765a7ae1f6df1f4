// The common part of the designer's windows: each is one object for the process, and its controls live from one showing
// to the end of it.
#pragma once

#include <memory>
#include <string>

#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "platform/window.h"

namespace orvenmod {

class Dialog {
public:
    virtual ~Dialog() = default;
    Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

protected:
    /// Makes the window, connects its events, shows it modally and takes it away. A failure of Form_Load goes to the
    /// caller. Throws std::logic_error where it is shown already.
    void showModal(const platform::WindowDesign& design);

    /// Throws std::logic_error where it isn't shown.
    platform::Window& window() const;
    platform::EntryGrid& fps1() const { return window().get<platform::EntryGrid>("fps1"); }
    std::string editText(const char* name, int index = -1) const;

    virtual void connectEvents() = 0;
    virtual void Form_Load() = 0;

private:
    std::unique_ptr<platform::Window> window_;
};

}  // namespace orvenmod
