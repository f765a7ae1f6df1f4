// The rights of an item class: "Y" + the class + two digits for what is to be done.
#pragma once

namespace orvenmod {

/// Whether the user has the right of class gItemClassId with these two digits. Shows the refusal itself.
bool isClassRightGranted(const char* digits);

}  // namespace orvenmod
