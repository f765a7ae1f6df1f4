// Whether there is a display, asked before Qt is: Qt ends the process where it finds none.
#pragma once

namespace orvenmod::platform::qt {

/// Throws std::runtime_error, which says what is missing, where none of the displays that Qt would try is there.
void requireDisplay();

}  // namespace orvenmod::platform::qt
