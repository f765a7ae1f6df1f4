// A window made from a design. Owned by the window's logic; its controls are handed out by name.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/control.h"
#include "platform/event.h"
#include "platform/keys.h"

namespace orvenmod::platform {

/// The largest inner width and height, in twips, that a user can give a window: what measures it counts to 32767, and a
/// size is whole pixels.
inline constexpr float kLargestInner = 32760;

class Window {
public:
    virtual ~Window() = default;

    virtual const std::string& name() const = 0;
    virtual std::string caption() const = 0;
    virtual void setCaption(const std::string& caption) = 0;

    /// The inner size in twips. setInnerSize raises `resize` while the window is shown.
    virtual float innerWidth() const = 0;
    virtual float innerHeight() const = 0;
    virtual void setInnerSize(float width, float height) = 0;

    /// All controls in the order of the design, then the menus in theirs.
    virtual const std::vector<Control*>& controls() const = 0;
    /// Null where there is none of that name and index.
    virtual Control* find(const std::string& name, int index = -1) const = 0;

    /// Shows the window, painted once and with the hourglass, runs `load` (the window's Form_Load), raises `resize` and
    /// blocks until the window is closed; then raises `unload`. A failure of `load` takes the window away and goes to
    /// the caller, without resize and unload.
    virtual void showModal(const std::function<void()>& load) = 0;
    /// Ends showModal. Nothing where the window isn't shown.
    virtual void close() = 0;
    virtual bool shown() const = 0;

    virtual void setPointer(Pointer pointer) = 0;
    virtual Pointer pointer() const = 0;

    Event<> resize;
    Event<> unload;
    /// Raised about three times a minute from the end of the load to the end of the window, whatever lies over it, but
    /// not while something is painted within an event. As an event of the user's for its failures.
    Event<> tick;

    /// The control of that name as its kind. Throws std::logic_error for a name or a kind that is wrong.
    template <class Kind>
    Kind& get(const std::string& name, int index = -1) const {
        if (auto* control = dynamic_cast<Kind*>(find(name, index))) return *control;
        throw std::logic_error("no such control: " + name);
    }
};

}  // namespace orvenmod::platform
