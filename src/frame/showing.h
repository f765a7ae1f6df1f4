// One showing of a window of which the process has one object.
#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace orvenmod {

/// Does its work at the end of a scope, however the scope is left.
class AtEnd {
public:
    explicit AtEnd(std::function<void()> work) : work_(std::move(work)) {}
    ~AtEnd() { work_(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

private:
    std::function<void()> work_;
};

/// Makes the window's parts, shows it and drops them, however it ends. Throws std::logic_error where it is shown
/// already.
template <class Parts, class Make, class Show>
void showOnce(std::unique_ptr<Parts>& parts, Make make, Show show) {
    if (parts) throw std::logic_error("窗体已显示；不能以模态方式显示");
    parts = make();
    const AtEnd atEnd([&parts] { parts.reset(); });
    show();
}

/// The parts of a window that is shown. Throws std::logic_error where it isn't.
template <class Parts>
Parts& whileShown(const std::unique_ptr<Parts>& parts, const char* window) {
    if (!parts) throw std::logic_error(std::string(window) + " isn't shown");
    return *parts;
}

}  // namespace orvenmod
