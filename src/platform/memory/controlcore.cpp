#include "platform/memory/controlcore.h"

#include <stdexcept>

#include "platform/memory/memorywindow.h"

namespace orvenmod::platform::memory {

ControlCore::ControlCore(MemoryWindow& window, const ControlDesign& design)
    : state{std::string(design.name), std::string(design.tag), design.left, design.top, design.width, design.height,
            design.visible,           design.enabled},
      window_(window),
      design_(design) {}

bool ControlCore::showsPage(int) const { return true; }

MemoryToolkit& ControlCore::toolkit() const { return window_.toolkit(); }

bool ControlCore::shown() const {
    const ControlCore* inner = this;
    for (; inner->parent; inner = inner->parent) {
        if (!inner->state.visible || !inner->parent->showsPage(inner->design_.page)) return false;
    }
    return inner->state.visible;
}

bool ControlCore::usable() const {
    for (const ControlCore* each = this; each; each = each->parent) {
        if (!each->state.enabled) return false;
    }
    return shown();
}

bool ControlCore::tabStop() const { return takesFocus(design_.kind) && usable(); }

void ControlCore::focus() {
    if (!tabStop()) throw std::runtime_error("无效的过程调用或参数");
    window_.setFocused(this);
}

bool ControlCore::focused() const { return window_.focused() == this; }

}  // namespace orvenmod::platform::memory
