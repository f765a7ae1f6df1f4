// The design of frmJCZL.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& entryDesign();

}  // namespace orvenmod
