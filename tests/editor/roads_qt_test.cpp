#include "editor/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnQt, EditorRoads, ::testing::Values(newQtScript));

}  // namespace orvenmod::test
