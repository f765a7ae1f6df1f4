#include "platform/memory/memorytoolkit.h"

#include <filesystem>
#include <stdexcept>

#include "platform/failuretext.h"
#include "platform/memory/memorydriver.h"
#include "platform/memory/memoryreport.h"
#include "platform/memory/memorywindow.h"
#include "platform/settings.h"

namespace orvenmod::platform::memory {

namespace {

class MemoryProgress final : public Progress {
public:
    MemoryProgress(MemoryToolkit& toolkit, std::string text, int whole)
        : toolkit_(toolkit), text_(std::move(text)), whole_(whole) {}

    bool advance(int done) override {
        toolkit_.paintPending();
        const auto& observer = toolkit_.progressObserver();
        if (goesOn_ && observer) goesOn_ = observer(text_, done, whole_);
        return goesOn_;
    }

private:
    MemoryToolkit& toolkit_;
    std::string text_;
    int whole_;
    bool goesOn_ = true;
};

}  // namespace

std::unique_ptr<Window> MemoryToolkit::createWindow(const WindowDesign& design) {
    return std::make_unique<MemoryWindow>(*this, design);
}

std::unique_ptr<Report> MemoryToolkit::createReport() { return std::make_unique<MemoryReport>(*this); }

bool MemoryToolkit::warnOffering(const std::string& text, const std::string& title, const std::string&) {
    return driver_.onMessage(MessageKind::warning, text, title) == Answer::further;
}

Answer MemoryToolkit::message(MessageKind kind, const std::string& text, const std::string& title) {
    return driver_.onMessage(kind, text, title);
}

void MemoryToolkit::sendTab() {
    if (MemoryWindow* window = front()) window->moveFocus(FocusWay::on);
}

void MemoryToolkit::openDocument(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(nativePath(path), error)) throw std::runtime_error("找不到文件：" + path);
    driver_.onDocument(path);
}

std::unique_ptr<Progress> MemoryToolkit::createProgress(const std::string& text, const std::string&, int whole) {
    return std::make_unique<MemoryProgress>(*this, text, whole);
}

void MemoryToolkit::passTick() {
    for (std::size_t each = 0; each < stack_.size(); ++each)
        stack_[each]->passTick();
}

void MemoryToolkit::guard(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const std::exception& failure) {
        showEscaped(failureText(failure));
    }
}

}  // namespace orvenmod::platform::memory
