// Walks a window's design by keyboard: every control that a user can act on is reached by the Tab key in the order of
// the design, the walk comes back to its start, and each has a name for a screen reader.
#pragma once

#include "support/user.h"

namespace orvenmod::test {

/// Opens a window of the design and walks it; a control that is missed, or has no name, fails the test.
void walkByKeyboard(Script& script, const platform::WindowDesign& design);

}  // namespace orvenmod::test
