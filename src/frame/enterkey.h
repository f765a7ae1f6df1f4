// Fields that the key Enter leaves as the Tab key does.
#pragma once

#include <initializer_list>

#include "platform/controls.h"

namespace orvenmod {

void moveOnByEnter(std::initializer_list<platform::Edit*> edits);

}  // namespace orvenmod
