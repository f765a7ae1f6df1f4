#include "guide.h"

#include <QTest>
#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace orvenmod::sample {

Guide::Guide(SuiteWindow& suite, platform::qt::QtToolkit& toolkit, Album& album)
    : suite_(suite), toolkit_(toolkit), album_(album) {
    toolkit_.setModalObserver([this](platform::Window& window) { visit(window); });
}

Guide::~Guide() { toolkit_.setModalObserver({}); }

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

void Guide::showShortWork(bool show) {
    using std::chrono::milliseconds;
    if (show) {
        toolkit_.setProgressPace(milliseconds(0), milliseconds(0));
    } else {
        toolkit_.setProgressPace();
    }
}

// What fails here must not look like a failure of the window, so it is kept for play().
void Guide::visit(platform::Window& window) {
    const auto next =
        std::find_if(steps_.begin(), steps_.end(), [&](const auto& each) { return each.first == window.name(); });
    try {
        if (next == steps_.end()) throw std::runtime_error("nobody expected the window " + window.name());
        const Steps steps = std::move(next->second);
        steps_.erase(next);
        Visitor visitor(window, album_);
        steps(visitor);
        visitor.boxesDone();
    } catch (...) {
        if (!failure_) failure_ = std::current_exception();
    }
    if (window.shown()) window.close();
}

}  // namespace orvenmod::sample
