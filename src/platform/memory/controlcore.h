// What every control has, whatever its kind, and MemoryControl, which gives it to the interface of a kind.
#pragma once

#include <string>

#include "platform/control.h"

namespace orvenmod::platform::memory {

class MemoryToolkit;
class MemoryWindow;

class ControlCore {
public:
    ControlCore(MemoryWindow& window, const ControlDesign& design);
    virtual ~ControlCore() = default;
    ControlCore(const ControlCore&) = delete;
    ControlCore& operator=(const ControlCore&) = delete;

    virtual Control& control() = 0;
    /// Whether what lies on page `page` of this container shows.
    virtual bool showsPage(int page) const;

    MemoryWindow& window() const { return window_; }
    MemoryToolkit& toolkit() const;
    const ControlDesign& design() const { return design_; }
    ControlCore* parent = nullptr;  ///< the container, null for the window

    /// Whether the user sees it: itself, its containers and its tab.
    bool shown() const;
    /// Whether the user can also act on it.
    bool usable() const;
    /// Whether the Tab key stops at it.
    bool tabStop() const;

    void focus();
    bool focused() const;

    struct State {
        std::string name, tag;
        float left, top, width, height;
        bool visible, enabled;
    } state;

private:
    MemoryWindow& window_;
    ControlDesign design_;
};

template <class Interface>
class MemoryControl : public Interface, public ControlCore {
public:
    MemoryControl(MemoryWindow& window, const ControlDesign& design) : ControlCore(window, design) {}

    Control& control() override { return *this; }

    const std::string& name() const override { return state.name; }
    int index() const override { return design().index; }
    ControlKind kind() const override { return design().kind; }
    float left() const override { return state.left; }
    float top() const override { return state.top; }
    float width() const override { return state.width; }
    float height() const override { return state.height; }
    void setLeft(float twips) override { state.left = twips; }
    void setTop(float twips) override { state.top = twips; }
    void setWidth(float twips) override { state.width = twips; }
    void setHeight(float twips) override {
        if (design().kind != ControlKind::combo) state.height = twips;
    }
    bool visible() const override { return state.visible; }
    void setVisible(bool visible) override { state.visible = visible; }
    bool enabled() const override { return state.enabled; }
    void setEnabled(bool enabled) override { state.enabled = enabled; }
    const std::string& tag() const override { return state.tag; }
    void setTag(const std::string& tag) override { state.tag = tag; }
    void setFocus() override { focus(); }
    bool hasFocus() const override { return focused(); }
};

}  // namespace orvenmod::platform::memory
