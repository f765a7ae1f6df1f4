// The main roads through categories and commands, for each toolkit: a binary instantiates the suite with its own
// script.
#pragma once

#include "hierarchy/hierarchytest.h"

namespace orvenmod::test {

class HierarchyRoads : public testing::TestWithParam<MakeScript> {
protected:
    void SetUp() override;
    void TearDown() override { stage.finish(); }

    HierarchyStage stage{GetParam()};
};

}  // namespace orvenmod::test
