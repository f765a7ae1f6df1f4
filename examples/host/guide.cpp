#include "guide.h"

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <stdexcept>

namespace orvenmod::sample {
namespace {

constexpr int kLook = 20;
constexpr int kPatience = 5000;

// The component's windows bear the system's names; the pointer is an hourglass until one has loaded.
bool hasLoaded(const QWidget& window) {
    return window.isVisible() && window.objectName().startsWith(QLatin1String("frm")) && window.isModal() &&
           QApplication::overrideCursor() == nullptr;
}

}  // namespace

Guide::Guide(SuiteWindow& suite, Album& album) : suite_(suite), album_(album) {
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    lookAgain();
}

void Guide::lookAgain() { timer_.start(kLook); }

void Guide::look() {
    // Windows open from within the steps of others, while those go on.
    lookAgain();
    std::erase_if(visited_, [](const QPointer<QWidget>& window) { return window == nullptr || !window->isVisible(); });
    awaitLeaving();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!hasLoaded(*window) || std::find(visited_.begin(), visited_.end(), window) != visited_.end()) continue;
        visited_.emplace_back(window);
        return visit(*window);
    }
}

void Guide::awaitLeaving() {
    if (leaving_ != nullptr && !leaving_->isVisible()) leaving_ = nullptr;
    if (leaving_ == nullptr || ++waited_ * kLook < kPatience) return;
    const std::string name = leaving_->objectName().toStdString();
    failure_ = std::make_exception_ptr(std::runtime_error(name + " is still open"));
    leaving_->close();
}

void Guide::play(User user, const std::function<void()>& open, const std::string& window, Steps steps) {
    suite_.logInAs(user);
    within(window, std::move(steps));
    open();
    if (failure_) std::rethrow_exception(failure_);
    if (!steps_.empty()) throw std::runtime_error("the window " + steps_.front().first + " didn't open");
}

void Guide::play(User user, const Request& request, Steps steps) {
    play(
        user, [this, &request] { suite_.open(request); }, "frmBasicInfoList", std::move(steps));
}

void Guide::pictureSuite(const std::string& name, const std::string& caption) {
    QTest::qWait(20);
    album_.add(suite_, name, caption);
}

// What fails here must not look like a failure of the window, so it is kept for play().
void Guide::visit(QWidget& window) {
    const std::string name = window.objectName().toStdString();
    const auto next = std::find_if(steps_.begin(), steps_.end(), [&](const auto& each) { return each.first == name; });
    try {
        if (next == steps_.end()) throw std::runtime_error("nobody expected the window " + name);
        const Steps steps = std::move(next->second);
        steps_.erase(next);
        Visitor visitor(window, album_);
        steps(visitor);
        visitor.boxesDone();
        if (visitor.isClosed()) {
            leaving_ = &window;
            waited_ = 0;
            return;
        }
    } catch (...) {
        if (!failure_) failure_ = std::current_exception();
    }
    window.close();
}

}  // namespace orvenmod::sample
