// The design of frmHSXMNew: controls, menus and toolbar as data.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& hsxmNewDesign();

}  // namespace orvenmod
