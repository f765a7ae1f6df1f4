#include "platform/contract/contract.h"

namespace orvenmod::test {

std::unique_ptr<Script> newScript() { return newQtScript(); }

}  // namespace orvenmod::test
