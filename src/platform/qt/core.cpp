#include "platform/qt/core.h"

#include <QApplication>
#include <algorithm>
#include <exception>

#include "platform/failuretext.h"
#include "platform/qt/entrygridview.h"

namespace orvenmod::platform::qt {

void Core::guard(const std::function<void()>& handler) const {
    try {
        handler();
    } catch (const std::exception& failure) {
        showEscaped(failureText(failure));
    } catch (...) {
        showEscaped("未知错误");
    }
}

void Core::command(const std::function<void()>& handler) const {
    const QWidget* window = front();
    if (window == nullptr || takeOverIn(*window)) guard(handler);
}

QWidget* Core::front() const { return modals_.empty() ? QApplication::activeWindow() : modals_.back(); }

void Core::popModal(QWidget* window) { std::erase(modals_, window); }

PlainPointer::PlainPointer() {
    for (; QApplication::overrideCursor() != nullptr; QApplication::restoreOverrideCursor())
        hidden_.push_back(*QApplication::overrideCursor());
}

PlainPointer::~PlainPointer() {
    for (; !hidden_.empty(); hidden_.pop_back())
        QApplication::setOverrideCursor(hidden_.back());
}

}  // namespace orvenmod::platform::qt
