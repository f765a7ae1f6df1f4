// The commands of the class designer as somebody gives them at its windows.
#pragma once

#include <functional>
#include <vector>

#include "memorystage.h"
#include "report.h"

namespace orvenmod::bench {

struct DesignerCommand {
    const char* name;
    const char* menu;
    const char* window;
    std::function<void(platform::memory::MemoryWindow&)> prepare;
    std::function<void(platform::memory::MemoryWindow&)> press;
};

/// A class made, a field added to the chosen one, and the setup of its fields.
std::vector<DesignerCommand> designerCommands(int newClass);

/// From the press of the button until the window has done it, in milliseconds of the clock. The stage's records are
/// those of the command.
double runCommand(MemoryStage& windows, const DesignerCommand& command, int chosenClass, const Clock& clock);

}  // namespace orvenmod::bench
