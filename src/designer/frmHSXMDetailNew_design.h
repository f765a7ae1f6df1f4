// The design of frmHSXMDetailNew: controls, menus and toolbar as data.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& hsxmDetailNewDesign();

}  // namespace orvenmod
