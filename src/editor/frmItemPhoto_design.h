// The design of frmItemPhoto.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& itemPhotoDesign();

}  // namespace orvenmod
