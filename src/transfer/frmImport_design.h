// The design of the window that brings a list in.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& importDesign();

}  // namespace orvenmod
