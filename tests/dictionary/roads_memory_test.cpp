#include "dictionary/roads.h"

namespace orvenmod::test {

INSTANTIATE_TEST_SUITE_P(OnMemory, DictionaryRoads, ::testing::Values(newMemoryScript));

}  // namespace orvenmod::test
