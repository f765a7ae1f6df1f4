// The design of frmBasicInfoList.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& basicInfoListDesign();

}  // namespace orvenmod
