#include "dictionary/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnQt, DictionaryRoads, ::testing::Values(newQtScript));

}  // namespace orvenmod::test
