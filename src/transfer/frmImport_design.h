#pragma once

#include "platform/design.h"

namespace orvenmod {

const platform::WindowDesign& importDesign();

}  // namespace orvenmod
