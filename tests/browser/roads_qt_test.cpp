#include "browser/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnQt, Roads, ::testing::Values(newQtScript));

}  // namespace orvenmod::test
