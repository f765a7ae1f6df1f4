// The main roads through the class designer, for each toolkit: a binary instantiates the suite with its own script.
#pragma once

#include <gtest/gtest.h>

#include "designer/designertest.h"

namespace orvenmod::test {

class DesignerRoads : public ::testing::TestWithParam<MakeScript> {
protected:
    DesignerStage stage{GetParam()};
};

}  // namespace orvenmod::test
