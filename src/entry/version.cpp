#include <orvenmod/version.h>

namespace orvenmod {

const char* version() noexcept { return ORVENMOD_VERSION; }

}  // namespace orvenmod
