// A window in memory. Its controls behave as on a screen, and a MemoryDriver plays the user.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/memory/controlcore.h"
#include "platform/window.h"

namespace orvenmod::platform::memory {

class MemoryMenu;
class MemoryToolkit;

enum class FocusWay { on, back };

class MemoryWindow final : public Window {
public:
    /// Throws std::logic_error for a design with a doubled name or a container that isn't.
    MemoryWindow(MemoryToolkit& toolkit, const WindowDesign& design);

    const std::string& name() const override { return name_; }
    std::string caption() const override { return caption_; }
    void setCaption(const std::string& caption) override { caption_ = caption; }
    float innerWidth() const override { return width_; }
    float innerHeight() const override { return height_; }
    void setInnerSize(float width, float height) override;
    const std::vector<Control*>& controls() const override { return controls_; }
    Control* find(const std::string& name, int index = -1) const override;
    void showModal(const std::function<void()>& load) override;
    void close() override { shown_ = false; }
    bool shown() const override { return shown_; }
    void setPointer(Pointer pointer) override { pointer_ = pointer; }
    Pointer pointer() const override { return pointer_; }

    /// Raises it where the window is in use.
    void passTick();

    MemoryToolkit& toolkit() const { return toolkit_; }
    const WindowDesign& design() const { return design_; }
    ControlCore* findCore(const std::string& name, int index = -1) const;
    const std::vector<MemoryMenu*>& menus() const { return menus_; }
    /// The control in focus; where it can't have it any more, the next one that can. Null where none can.
    ControlCore* focused() const;
    void setFocused(ControlCore* core);
    /// Whether the keyboard has just come to the edit in focus, whose text is marked then.
    bool marked() const { return marked_; }
    void mark() { marked_ = true; }
    void unmark() { marked_ = false; }
    /// Moves the focus on in the order of the design, or back, around the ends.
    void moveFocus(FocusWay way);
    /// A command, or the mouse on another control: leaves the cell that is open in a grid. False where it refuses.
    bool takeOver();

private:
    void addControls();
    void addMenus();
    void resolveParents();
    void add(std::unique_ptr<ControlCore> core);
    std::unique_ptr<ControlCore> make(const ControlDesign& design);
    ControlCore* nextStop(const ControlCore* from, FocusWay way) const;

    MemoryToolkit& toolkit_;
    WindowDesign design_;
    std::string name_;
    std::string caption_;
    float width_, height_;
    std::vector<std::unique_ptr<ControlCore>> cores_;
    std::vector<Control*> controls_;
    std::vector<MemoryMenu*> menus_;
    mutable ControlCore* focused_ = nullptr;
    bool marked_ = false;
    bool shown_ = false;
    bool loaded_ = false;
    Pointer pointer_ = Pointer::arrow;
};

}  // namespace orvenmod::platform::memory
