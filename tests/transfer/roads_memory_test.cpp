#include "transfer/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnMemory, ImportRoads, ::testing::Values(newMemoryScript));

}  // namespace orvenmod::test
