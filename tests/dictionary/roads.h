// The main roads through the dictionary's windows, for each toolkit: a binary instantiates the suite with its own
// script.
#pragma once

#include "dictionary/dictionarytest.h"

namespace orvenmod::test {

class DictionaryRoads : public testing::TestWithParam<MakeScript> {
protected:
    void TearDown() override { stage.finish(); }

    DictionaryStage stage{GetParam()};
};

}  // namespace orvenmod::test
