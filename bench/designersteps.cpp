#include "designersteps.h"

#include "designer/frmHSXM.h"
#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "platform/tree.h"

namespace orvenmod::bench {

using platform::memory::MemoryWindow;

namespace {

void select(MemoryWindow& window, const std::string& key) {
    auto& tree = window.get<platform::Tree>("tv1");
    tree.select(key);
    tree.nodeClick.raise(key);
}

void pressTool(MemoryWindow& window, const char* key) {
    window.get<platform::Toolbar>("Toolbar1").buttonClick.raise(key);
}

}  // namespace

std::vector<DesignerCommand> designerCommands(int newClass) {
    const std::string id = std::to_string(newClass);
    return {{"creating a class", "MenuHSXMNew", "frmHSXMNew",
             [id](MemoryWindow& window) {
                 window.get<platform::Edit>("txtType").setText(id);
                 window.get<platform::Edit>("txt", 0).setText("新类" + id);
             },
             [](MemoryWindow& window) { window.get<platform::Button>("cmdOK").click.raise(); }},
            {"adding a field", "MenuDetailNew", "frmHSXMDetailNew",
             [](MemoryWindow& window) { window.get<platform::EntryGrid>("fps1").setText(2, 1, "新字段"); },
             [](MemoryWindow& window) { pressTool(window, "Save"); }},
            {"field setup, both views", "MenuDetailSetup", "frmHSXMDetailSetup", [](MemoryWindow&) {},
             [](MemoryWindow& window) { pressTool(window, "Save"); }}};
}

double runCommand(MemoryStage& windows, const DesignerCommand& command, int chosenClass, const Clock& clock) {
    double took = 0;
    std::vector<store::TraceRecord> sent;
    windows.onWindow("frmHSXM", [&](MemoryWindow& main) {
        select(main, "D" + std::to_string(chosenClass));
        windows.onWindow(command.window, [&](MemoryWindow& window) {
            command.prepare(window);
            windows.forgetRecords();
            took = leastOf(
                1, [&] { command.press(window); }, clock);
            sent = windows.records();
        });
        main.get<platform::Menu>(command.menu).click.raise();
    });
    frmHSXM::instance().show();
    windows.check();
    windows.keepRecords(std::move(sent));
    return took;
}

}  // namespace orvenmod::bench
