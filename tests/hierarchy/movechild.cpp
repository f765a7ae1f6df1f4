// Moves a category of the database named by its argument and writes one byte to its output for each statement, so that
// a test can end it at any moment.
#include <unistd.h>

#include <cstdlib>

#include "entry/storefactory.h"
#include "frame/appstate.h"
#include "frame/services.h"
#include "hierarchy/categorysave.h"
#include "platform/memory/memorydriver.h"
#include "platform/memory/memorytoolkit.h"
#include "store/trace.h"

namespace {

using namespace orvenmod;

class Nobody : public platform::memory::MemoryDriver {
public:
    void onModal(platform::memory::MemoryWindow&) override {}
    platform::Answer onMessage(platform::MessageKind, const std::string&, const std::string&) override {
        std::_Exit(2);  // the move was refused
    }
    std::string onFileDialog(bool, const std::string&) override { return {}; }
    void onPopUp(platform::memory::MemoryMenu&) override {}
    void onDocument(const std::string&) override {}
};

class Machine : public platform::Settings, public platform::IniFiles, public platform::Folders, public platform::Clock {
public:
    std::string get(const std::string&, const std::string&, const std::string&, const std::string& fallback) override {
        return fallback;
    }
    void save(const std::string&, const std::string&, const std::string&, const std::string&) override {}
    void remove(const std::string&, const std::string&, const std::string&) override {}
    std::string read(const std::string&, const std::string&, const std::string&) override { return {}; }
    bool write(const std::string&, const std::string&, const std::string&, const std::string&) override {
        return false;
    }
    std::string temporary() override { return {}; }
    std::string attachments() override { return {}; }
    platform::Date today() override { return {}; }
};

}  // namespace

int main(int, char** arguments) {
    Nobody nobody;
    platform::memory::MemoryToolkit toolkit(nobody);
    Machine machine;
    StoreFactory stores;
    store::TracingStore store(stores, [](const store::TraceRecord&) {
        if (::write(STDOUT_FILENO, ".", 1) != 1) std::_Exit(3);
    });
    Services services{store, toolkit, machine, machine, machine, machine};
    useServices(&services);
    AppState& state = appState();
    state.gConnStr = arguments[1];
    state.gItemClassId = 3;
    state.gItemTable = "ICItem";
    state.gCurItemId = 200;
    return moveCategory({"大类", "90", "02.90", "14"}) ? 0 : 1;
}
