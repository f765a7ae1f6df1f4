#include "frame/services.h"

#include <stdexcept>

namespace orvenmod {

namespace {
Services* inUse = nullptr;
}

Services& services() {
    if (inUse == nullptr) throw std::logic_error("no services have been chosen");
    return *inUse;
}

bool hasServices() { return inUse != nullptr; }

void useServices(Services* chosen) {
    inUse = chosen;
    if (chosen != nullptr) chosen->toolkit.setClock([&clock = chosen->clock] { return clock.today(); });
}

}  // namespace orvenmod
