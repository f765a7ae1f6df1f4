#include "designer/dialog.h"

#include <stdexcept>

#include "frame/services.h"
#include "frame/showing.h"

namespace orvenmod {

void Dialog::showModal(const platform::WindowDesign& design) {
    const auto make = [&design] { return services().toolkit.createWindow(design); };
    showOnce(window_, make, [this] {
        connectEvents();
        window_->showModal([this] { Form_Load(); });
    });
}

platform::Window& Dialog::window() const {
    if (!window_) throw std::logic_error("the window isn't shown");
    return *window_;
}

std::string Dialog::editText(const char* name, int index) const {
    return window().get<platform::Edit>(name, index).text();
}

}  // namespace orvenmod
