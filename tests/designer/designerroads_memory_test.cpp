#include "designer/designerroads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnMemory, DesignerRoads, ::testing::Values(newMemoryScript));

}  // namespace orvenmod::test
