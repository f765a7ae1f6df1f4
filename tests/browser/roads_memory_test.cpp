#include "browser/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnMemory, Roads, ::testing::Values(newMemoryScript));

}  // namespace orvenmod::test
