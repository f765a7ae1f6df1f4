// What the component stands on, chosen once by the start-up (src/entry) or by a test.
#pragma once

#include "platform/settings.h"
#include "platform/toolkit.h"
#include "store/connection.h"

namespace orvenmod {

struct Services {
    store::Store& store;
    platform::Toolkit& toolkit;
    platform::Settings& settings;
    platform::IniFiles& iniFiles;
    platform::Folders& folders;
    platform::Clock& clock;
};

/// Throws std::logic_error before useServices.
Services& services();
bool hasServices();

/// Null takes them away again. The caller keeps them alive.
void useServices(Services* chosen);

}  // namespace orvenmod
