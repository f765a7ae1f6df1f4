#include "hierarchy/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnQt, HierarchyRoads, ::testing::Values(newQtScript));

}  // namespace orvenmod::test
