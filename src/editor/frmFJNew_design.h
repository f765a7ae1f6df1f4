// The design of frmFJNew.
#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& newAttachmentDesign();

}  // namespace orvenmod
