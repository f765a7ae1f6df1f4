// The design of frmParent.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& parentDesign();

}  // namespace orvenmod
