// The design of frmHSXM: controls, menus and toolbar as data.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& hsxmDesign();

}  // namespace orvenmod
