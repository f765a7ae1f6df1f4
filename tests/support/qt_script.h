// A picture of what a scripted user of the Qt toolkit sees, for a look at a failing scenario.
#pragma once

#include <string>

#include "platform/window.h"

namespace orvenmod::test {

/// Writes the window, which must be shown, as a PNG. False where it can't.
bool grab(const platform::Window& window, const std::string& path);

}  // namespace orvenmod::test
