// The design of frmJCZLType.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& dictionaryDesign();

}  // namespace orvenmod
