// The design of frmJCBasicInfo.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& dictionariesDesign();

}  // namespace orvenmod
