// The design of frmHSXMDetailSetup: controls, menus and toolbar as data.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& hsxmDetailSetupDesign();

}  // namespace orvenmod
