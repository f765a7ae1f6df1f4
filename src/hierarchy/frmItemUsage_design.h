// The design of the window that tells which bills use an item.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& itemUsageDesign();

}  // namespace orvenmod
