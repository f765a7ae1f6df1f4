#include "torture/desk.h"

#include <gtest/gtest-spi.h>

#include <exception>
#include <utility>

#include "editor/editortest.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"

namespace orvenmod::test {

class Desk::Aside {
public:
    explicit Aside(const Desk& desk) : desk_(desk) {
        if (desk_.aside) desk_.aside(true);
    }
    ~Aside() {
        if (desk_.aside) desk_.aside(false);
    }
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

private:
    const Desk& desk_;
};

Desk::Desk(const std::string& connectionString, const std::string& folder)
    : ChildClerk(folder + "/photo.bmp"), connectionString_(connectionString), folder_(folder) {
    settings_.save("Orvencom", "SystemSetup", "msgTitle", kTitle);
    settings_.save("Orvencom", "SystemSetup", "gAppPath", folder);
    settings_.save("Orvencom", "SystemLogin", "gLoginUserId", "7");
    settings_.save("Orvencom", "SystemLogin", "IsAdmin", "1");
    useServices(&services_);
    begin();
}

Desk::~Desk() {
    closeDB();
    appState() = AppState();
    useServices(nullptr);
}

// What the list tells the windows behind it.
void Desk::begin() {
    appState() = AppState();
    chooseGoods(connectionString_);
    windows_.clear();
    boxes_.clear();
    escaped_.clear();
    told_ = false;
}

void Desk::play(const Command& command) {
    testing::TestPartResultArray steps;
    // A step that can't be done any more is no failure of the test.
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &steps);
    {
        const Aside preparing(*this);
        begin();
        success_ = command.success;
    }
    try {
        command.act(*this);
    } catch (const std::exception& failure) {
        const Aside noting(*this);
        escaped_ = failure.what();
    }
    closeDB();
}

void Desk::onModal(platform::memory::MemoryWindow& window) {
    try {
        ChildClerk::onModal(window);
    } catch (const std::exception& failure) {
        const Aside noting(*this);
        escaped_ = failure.what();
    }
}

platform::Answer Desk::onMessage(platform::MessageKind kind, const std::string& text, const std::string& title) {
    const Aside noting(*this);
    boxes_.push_back({kind, text, title});
    if (kind == MessageKind::information && text == success_) told_ = true;
    return kind == MessageKind::question ? Answer::yes : Answer::ok;
}

void Desk::work(User& user) {
    const auto steps = windows_.find(user.window().name());
    if (steps != windows_.end()) steps->second(user);
}

std::string Desk::account() const {
    std::string all = told_ ? "told as done" : "not told as done";
    for (const ShownMessage& box : boxes_)
        all += "\n  " + describeBox(box.kind, box.text);
    if (!escaped_.empty()) all += "\n  to the host: " + escaped_;
    return all;
}

}  // namespace orvenmod::test
