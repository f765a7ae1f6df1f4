#include "transfer/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnQt, ImportRoads, ::testing::Values(newQtScript));

}  // namespace orvenmod::test
