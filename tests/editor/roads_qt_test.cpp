#include "editor/cellroads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnQt, EditorRoads, ::testing::Values(newQtScript));
INSTANTIATE_TEST_SUITE_P(OnQt, EditorCellRoads, ::testing::Values(newQtScript));

}  // namespace orvenmod::test
