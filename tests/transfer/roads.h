// The main roads through the import, for each toolkit: a binary instantiates the suite with its own script.
#pragma once

#include <gtest/gtest.h>

#include "transfer/importtest.h"

namespace orvenmod::test {

class ImportRoads : public ::testing::TestWithParam<MakeScript> {
protected:
    ImportStage stage{GetParam()};
};

}  // namespace orvenmod::test
