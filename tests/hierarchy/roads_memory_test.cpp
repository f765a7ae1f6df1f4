#include "hierarchy/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnMemory, HierarchyRoads, ::testing::Values(newMemoryScript));

}  // namespace orvenmod::test
