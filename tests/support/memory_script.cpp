// The scripts of one test over the memory toolkit: the driver that lets a MemoryUser act in every window that opens.
#include <gtest/gtest.h>

#include "platform/memory/memorydriver.h"
#include "support/memory_user.h"
#include "support/testlocale.h"

namespace orvenmod::test {

namespace {

using namespace platform;
using namespace platform::memory;

class MemoryScript final : public BookedScript, private MemoryDriver {
public:
    MemoryScript() {
        toolkit_.setProgressObserver([this](const std::string&, int done, int) { return !book_.takeCancel(done); });
    }

    Toolkit& toolkit() override { return toolkit_; }

private:
    void onModal(MemoryWindow& window) override {
        const auto steps = book_.takeWindow(window.name());
        if (!steps) return;
        MemoryUser user(window, book_, popUp_);
        try {
            (*steps)(user);
        } catch (const ScriptStopped&) {
        } catch (const std::exception& failure) {
            ADD_FAILURE() << "the script of " << window.name() << " failed: " << failure.what();
        }
    }
    Answer onMessage(MessageKind kind, const std::string& text, const std::string& title) override {
        return book_.takeAnswer(kind, text, title);
    }
    std::string onFileDialog(bool, const std::string&) override { return book_.takeFile(); }
    void onPopUp(MemoryMenu& menu) override {
        const PopUpChoice choice = popUp_;
        popUp_ = {};
        if (!choice.waiting) {
            ADD_FAILURE() << "the menu " << menu.name() << " popped up without a right click";
            return;
        }
        if (choice.menu.empty()) return;
        auto* entry = dynamic_cast<MemoryMenu*>(menu.window().findCore(choice.menu));
        if (!entry || entry == &menu || !entry->choosable(&menu)) {
            ADD_FAILURE() << "the menu " << menu.name() << " popped up and " << choice.menu << " can't be chosen in it";
            return;
        }
        toolkit_.guard([entry] { entry->click.raise(); });
    }
    void onDocument(const std::string& path) override { book_.addDocument(path); }

    PopUpChoice popUp_;
    MemoryToolkit toolkit_{*this};
};

}  // namespace

std::unique_ptr<Script> newMemoryScript() {
    useTestLocale();
    return std::make_unique<MemoryScript>();
}

}  // namespace orvenmod::test
