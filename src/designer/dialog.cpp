#include "designer/dialog.h"

#include <stdexcept>

#include "frame/services.h"

namespace orvenmod {

void Dialog::showModal(const platform::WindowDesign& design) {
    if (window_) throw std::logic_error("窗体已显示；不能以模态方式显示");
    window_ = services().toolkit.createWindow(design);
    const std::shared_ptr<void> atEnd(nullptr, [this](void*) { window_.reset(); });
    connectEvents();
    window_->showModal([this] { Form_Load(); });
}

platform::Window& Dialog::window() const {
    if (!window_) throw std::logic_error("the window isn't shown");
    return *window_;
}

std::string Dialog::editText(const char* name, int index) const {
    return window().get<platform::Edit>(name, index).text();
}

}  // namespace orvenmod
