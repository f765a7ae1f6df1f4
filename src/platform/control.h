// Seam two: the toolkit. What the windows' logic needs of every control. Called by the windows, implemented by
// platform/qt and platform/memory. One thread, the host's. Places and sizes are in twips (15 to a pixel at 96 dpi),
// relative to the control's container. Controls belong to their window and die with it.
#pragma once

#include <string>

#include "platform/design.h"

namespace orvenmod::platform {

class Control {
public:
    virtual ~Control() = default;
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    virtual const std::string& name() const = 0;
    /// Place in a control array, -1 for a control that is alone.
    virtual int index() const = 0;
    virtual ControlKind kind() const = 0;

    virtual float left() const = 0;
    virtual float top() const = 0;
    virtual float width() const = 0;
    virtual float height() const = 0;
    virtual void setLeft(float twips) = 0;
    virtual void setTop(float twips) = 0;
    virtual void setWidth(float twips) = 0;
    /// Combo boxes keep their own height and ignore this.
    virtual void setHeight(float twips) = 0;

    /// Shown as far as this control goes; a hidden container hides it all the same.
    virtual bool visible() const = 0;
    virtual void setVisible(bool visible) = 0;
    virtual bool enabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;

    virtual const std::string& tag() const = 0;
    virtual void setTag(const std::string& tag) = 0;

    /// The text of an edit is marked then. Throws std::runtime_error where the control is disabled or not visible.
    virtual void setFocus() = 0;
    virtual bool hasFocus() const = 0;
};

}  // namespace orvenmod::platform
