// Which version of the component this is.
#pragma once

#include <orvenmod/export.h>

namespace orvenmod {

/// "major.minor.patch" of the library that is loaded.
ORVENMOD_API const char* version() noexcept;

}  // namespace orvenmod
