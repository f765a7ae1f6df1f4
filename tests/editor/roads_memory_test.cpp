#include "editor/cellroads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnMemory, EditorRoads, ::testing::Values(newMemoryScript));
INSTANTIATE_TEST_SUITE_P(OnMemory, EditorCellRoads, ::testing::Values(newMemoryScript));

}  // namespace orvenmod::test
