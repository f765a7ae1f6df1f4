#include "frame/appstate.h"

namespace orvenmod {

AppState& appState() {
    static AppState record;
    return record;
}

}  // namespace orvenmod
