// The design of frmJCZLList.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& entryListDesign();

}  // namespace orvenmod
