// The design of frmBasicInfo.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& basicInfoDesign();

}  // namespace orvenmod
