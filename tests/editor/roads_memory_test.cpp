#include "editor/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnMemory, EditorRoads, ::testing::Values(newMemoryScript));

}  // namespace orvenmod::test
