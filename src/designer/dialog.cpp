#include "designer/dialog.h"

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

platform::Window& Dialog::window() const { return whileShown(window_, "the window"); }

std::string Dialog::editText(const char* name, int index) const {
    return window().get<platform::Edit>(name, index).text();
}

}  // namespace orvenmod
