// Whether there is a display, asked before Qt is: Qt ends the process where it finds none.
#pragma once

#include <memory>

namespace orvenmod::platform::qt {

/// A connection of ours. It is held until Qt has its own: a server may end, or begin anew, when its last client leaves.
using DisplayHold = std::shared_ptr<void>;

/// Throws std::runtime_error, which says what is missing, where none of the displays that Qt would try is there.
[[nodiscard]] DisplayHold requireDisplay();

}  // namespace orvenmod::platform::qt
