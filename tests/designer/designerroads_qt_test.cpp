#include "designer/designerroads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnQt, DesignerRoads, ::testing::Values(newQtScript));

}  // namespace orvenmod::test
