// What tells the cells that the user can't write from the others, in every window with an entry grid.
#pragma once

#include "platform/design.h"
#include "platform/entrygrid.h"

namespace orvenmod {

inline constexpr platform::Colour kLockedColour{244, 244, 217};

}  // namespace orvenmod
