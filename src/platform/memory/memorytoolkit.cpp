#include "platform/memory/memorytoolkit.h"

#include <filesystem>
#include <stdexcept>

#include "platform/memory/memorydriver.h"
#include "platform/memory/memoryreport.h"
#include "platform/memory/memorywindow.h"
#include "platform/settings.h"

namespace orvenmod::platform::memory {

std::unique_ptr<Window> MemoryToolkit::createWindow(const WindowDesign& design) {
    return std::make_unique<MemoryWindow>(*this, design);
}

std::unique_ptr<Report> MemoryToolkit::createReport() { return std::make_unique<MemoryReport>(*this); }

Answer MemoryToolkit::message(MessageKind kind, const std::string& text, const std::string& title) {
    return driver_.onMessage(kind, text, title);
}

void MemoryToolkit::sendTab() {
    if (MemoryWindow* window = front()) window->moveFocus(false);
}

void MemoryToolkit::openDocument(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(nativePath(path), error)) throw std::runtime_error("找不到文件：" + path);
    driver_.onDocument(path);
}

void MemoryToolkit::guard(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const std::exception& failure) {
        showEscaped(failure.what());
    }
}

}  // namespace orvenmod::platform::memory
