#include "support/sourcefolder.h"

namespace orvenmod::test {

std::string sourceFile(const std::string& path) { return std::string(ORVEN_SOURCE_DIR) + "/" + path; }

}  // namespace orvenmod::test
